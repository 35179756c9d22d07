// The answer of a server that the doctor asks.

#include "support/AnswerServer.h"
#include "support/Fuzz.h"

#include <doctor/HttpExchange.h>

void fuzzOne(const QByteArray &input)
{
    constexpr qsizetype maxBody = 100;
    static auto &server = *new AnswerServer;
    server.setAnswer(input);
    const auto answer = doctor::exchange(
        {.url = server.url(), .timeout = std::chrono::seconds(5), .maxBodyBytes = maxBody});
    fuzz::require(answer.body.size() <= maxBody, "a body is cut off at its limit");
    fuzz::require((answer.outcome == doctor::Outcome::Answered) == (answer.status != 0),
                  "an answer has a status");
    answer.date();
    doctor::reasonOf(answer);
}
