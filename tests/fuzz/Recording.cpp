// A recording that is to be replayed.

#include "support/Fuzz.h"

#include <common/UsageError.h>
#include <replay/RecordingReader.h>

void fuzzOne(const QByteArray &input)
{
    RecordingReader reader(fuzz::inFile(input));
    try {
        while (const auto message = reader.next()) {
            fuzz::require(!message->type.isEmpty() && message->ms >= 0 &&
                              message->body.startsWith('{'),
                          "what is replayed is a message at a time");
        }
    } catch (const UsageError &) {
        return;
    }
}
