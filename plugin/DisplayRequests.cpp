// Requests of the display: each is acknowledged at once, then routed to what it asks for.

#include <plugin/ViewConnector.h>

#include <log4qt/logger.h>

#include <QJsonDocument>

namespace {

const auto nameKey = QStringLiteral("name");

} // namespace

void ViewConnector::requestReceived(const RequestHeader &, const QByteArray &content)
try {
    logger->info(QStringLiteral("Получено сообщение"));
    ResponseHeader answer;
    answer.setStatusLine(200, QStringLiteral("OK"), 1, 1);
    answer.setContentType(QStringLiteral("application/json"));
    server->sendResponse(answer, QByteArray());
    // What is no JSON object reads as an empty one.
    const QJsonObject message = QJsonDocument::fromJson(content).object();
    if (message.value(QStringLiteral("type")).toString() == u"request")
        processRequest(message);
    else
        processResult(message);
} catch (...) {
    // The host's server, its store of pictures or its settings have failed. There is nobody above
    // but the event loop.
}

void ViewConnector::processRequest(const QJsonObject &request)
{
    if (request.value(nameKey).toString() == u"getImage")
        processGetImageRequest(request);
}

void ViewConnector::processResult(const QJsonObject &result)
{
    if (result.value(nameKey).toString() == u"adResult")
        processAdResult(result);
}
