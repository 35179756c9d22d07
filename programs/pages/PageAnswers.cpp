#include <pages/PageAnswers.h>

namespace {

constexpr int ok = 200;
constexpr int noContent = 204;

/// Frames: a page of one program may show that of another on this machine.
const auto policy =
    QStringLiteral("default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
                   "media-src 'self' blob:; connect-src 'self'; "
                   "frame-src 'self' http://127.0.0.1:* http://localhost:*; "
                   "frame-ancestors 'self' http://127.0.0.1:* http://localhost:*; "
                   "base-uri 'none'; form-action 'none'");

} // namespace

ResponseHeader pageHeader(int status, const QString &contentType)
{
    ResponseHeader header;
    header.setStatusLine(status, {}, 1, 1);
    if (!contentType.isEmpty())
        header.setContentType(contentType);
    header.setValue(QStringLiteral("Content-Security-Policy"), policy);
    header.setValue(QStringLiteral("X-Content-Type-Options"), QStringLiteral("nosniff"));
    header.setValue(QStringLiteral("Referrer-Policy"), QStringLiteral("no-referrer"));
    header.setValue(QStringLiteral("Cache-Control"), QStringLiteral("no-store"));
    return header;
}

void answerWith(HttpServer &server, const QString &contentType, const QByteArray &body)
{
    server.sendResponse(pageHeader(ok, contentType), body);
}

void answerWithJson(HttpServer &server, const QJsonDocument &json)
{
    answerWith(server, QStringLiteral("application/json"), json.toJson(QJsonDocument::Compact));
}

void answerDone(HttpServer &server)
{
    server.sendResponse(pageHeader(noContent, {}), {});
}

void answerWithText(HttpServer &server, int status, const QString &text)
{
    server.sendResponse(pageHeader(status, QStringLiteral("text/plain; charset=utf-8")),
                        text.toUtf8() + '\n');
}
