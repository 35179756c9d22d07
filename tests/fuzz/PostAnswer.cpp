// The display's answer to a message that the plug-in has posted.

#include "support/AnswerServer.h"
#include "support/Fuzz.h"

#include <RestClient.h>

void fuzzOne(const QByteArray &input)
{
    static auto &server = *new AnswerServer;
    static auto &client = *new RestClient;
    server.setAnswer(input);
    client.setRequestTimeout(5);
    const int result = client.post(server.url(), {}, {});
    fuzz::require(result == client.result(), "a post has one result");
    fuzz::require(result != 0 || input.startsWith("HTTP/"), "only an answer is a success");
}
