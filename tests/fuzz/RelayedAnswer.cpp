// The answer to a request that the recorder and the replay pass on.

#include "support/AnswerServer.h"
#include "support/Fuzz.h"

#include <relay/HttpTransfer.h>

void fuzzOne(const QByteArray &input)
{
    static auto &server = *new AnswerServer;
    server.setAnswer(input);
    const auto answer = transfer({serverOf(server.url()), "GET", "/", {}, {}},
                                 std::chrono::seconds(5), std::stop_token());
    fuzz::require((answer.status == 0) == !answer.error.isEmpty(),
                  "there is a whole answer, or a reason why not");
}
