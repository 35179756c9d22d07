// A message to the display: the path on the first line, the body behind it.

#include "support/Fuzz.h"

#include <display/ConformanceCheck.h>
#include <display/LastMessages.h>
#include <display/MessageText.h>
#include <display/Pictures.h>
#include <display/QrPicture.h>

void fuzzOne(const QByteArray &input)
{
    const auto fields = fuzz::fields(input, 2);
    const auto path = QString::fromUtf8(fields[0]);
    const auto message = readMessage(QStringLiteral("POST"), path, fields[1]);
    static ConformanceCheck check; // keeps a limited number of problems
    check.judge(1, RequestHeader(QStringLiteral("POST"), path), message);
    check.report();
    if (!message.refusal.isEmpty())
        return;

    fuzz::require(!message.type.isEmpty(), "a message that is accepted has a type");
    describeMessage(message.type, message.body);
    LastMessages messages;
    for (int number = 1; number <= 2; ++number)
        messages.keep({number, message.type, message.body, 0});
    messages.toJson();
    Pictures pictures;
    pictures.configure(message.body);
    pictures.requestsFor(message.body);
    pictures.receive(message.body);
    qrPicture(message.body[u"qrCode"].toString());
}
