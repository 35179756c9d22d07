// The file that keeps the display's last messages.

#include "support/Fuzz.h"

#include <display/StateFile.h>

void fuzzOne(const QByteArray &input)
{
    const auto name = fuzz::inFile(input);
    const auto messages = StateFile(name).read().toJson();
    fuzz::require(StateFile(name).read().toJson() == messages,
                  "what was kept is read the same way again");
}
