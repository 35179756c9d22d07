// Requests of the display: each is acknowledged at once, then routed to what it asks for.

#include <plugin/ViewConnector.h>

#include <log4qt/logger.h>

void ViewConnector::requestReceived(const RequestHeader &, const QByteArray &)
{
    logger->info(QStringLiteral("Получено сообщение"));
    ResponseHeader answer;
    answer.setStatusLine(200, QStringLiteral("OK"), 1, 1);
    answer.setContentType(QStringLiteral("application/json"));
    server->sendResponse(answer, QByteArray());
}

void ViewConnector::processRequest(const QJsonObject &) {}

void ViewConnector::processResult(const QJsonObject &) {}
