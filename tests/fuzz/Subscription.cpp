// A register's subscription, as the ad service reads it.

#include "support/Fuzz.h"

#include <adservice/Subscription.h>

void fuzzOne(const QByteArray &input)
{
    const Announcement announcement{QStringLiteral("127.0.0.1:1"), 7, QStringLiteral("key")};
    const auto answer = answerSubscription(input, announcement, Fault::None);
    fuzz::require(answer && (answer->status == 200 || answer->status == 400),
                  "every request is answered, well or as a bad one");
    fuzz::require(answer->status == 400 || answer->fields.size() >= 2,
                  "a good answer has its fields");
}
