// Requests of a display that the register checks, one a line.

#include "support/Fuzz.h"

#include <register/check/RequestJudge.h>

void fuzzOne(const QByteArray &input)
{
    RequestJudge judge;
    double ms = 0;
    const auto lines = input.split('\n');
    for (const auto &line : lines)
        judge.take(line, ++ms);
    fuzz::require(!judge.results(1).isEmpty(), "every check has results");
}
