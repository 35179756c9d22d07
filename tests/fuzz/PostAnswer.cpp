// The display's answer to a message that the plug-in has posted.

#include "support/AnswerServer.h"
#include "support/Fuzz.h"

#include <RestClient.h>

void fuzzOne(const QByteArray &input)
{
    static auto &server = *new AnswerServer;
    server.setAnswer(input);
    RestClient client; // a new one: the server waits for the end of the connection
    client.setRequestTimeout(5);
    const int result = client.post(server.url(), {}, {});
    fuzz::require(result == client.result(), "a post has one result");
    const bool isAnswer = input.left(5).toUpper() == "HTTP/"; // libcurl takes small letters too
    fuzz::require(result != 0 || isAnswer, "only an answer is a success");
}
