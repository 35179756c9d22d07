// The display's answer to a message that the plug-in has posted.

#include "support/AnswerServer.h"
#include "support/Fuzz.h"

#include <RestClient.h>

#include <QRegularExpression>

namespace {

/// Whether some line of an answer is the status line of a success.
bool tellsSuccess(const QByteArray &answer)
{
    static const QRegularExpression line(
        QStringLiteral(R"(HTTP/(1\.[01]|2|2\.0) +2[0-9]{2}( |\r|\n))"),
        QRegularExpression::CaseInsensitiveOption);
    return line.match(QString::fromLatin1(answer)).hasMatch();
}

} // namespace

void fuzzOne(const QByteArray &input)
{
    static auto &server = *new AnswerServer;
    server.setAnswer(input);
    RestClient client; // a new one: the server waits for the end of the connection
    client.setRequestTimeout(5);
    const int result = client.post(server.url(), {}, {});
    fuzz::require(result == client.result(), "a post has one result");
    fuzz::require(result != 0 || tellsSuccess(input), "only an answer of 2xx is a success");
}
