#include "HttpDaemonCallbacks.h"

#include <algorithm>
#include <cstring>

namespace {

using Phase = HttpConnections::Phase;

/// The library also keeps a record for each argument of the query; where it finds no room for them
/// it leaves the client without an answer.
constexpr std::ptrdiff_t maxQueryArguments = 250;

} // namespace

/// The connection owns its exchange, since the library does not tell the completion of every
/// request: not of a further one on the connection that it finds no room for.
void HttpDaemon::Callbacks::onConnection(void *self, MHD_Connection *connection, void **exchange,
                                         MHD_ConnectionNotificationCode code)
{
    auto &daemon = *static_cast<HttpDaemon *>(self);
    if (code == MHD_CONNECTION_NOTIFY_STARTED) {
        *exchange = new ExchangePtr;
        daemon.m_connections.add(connection);
    } else {
        delete static_cast<ExchangePtr *>(*exchange);
        daemon.m_connections.remove(connection);
    }
}

void *HttpDaemon::Callbacks::onUri(void *self, const char *uri, MHD_Connection *connection)
{
    auto &daemon = *static_cast<HttpDaemon *>(self);
    if (std::count(uri, uri + std::strlen(uri), '&') >= maxQueryArguments) {
        daemon.m_refusals.noteRequest(HttpRefusals::Kind::Size, QString::fromUtf8(uri),
                                      QStringLiteral("слишком много параметров"));
        daemon.m_connections.cut(connection, "414 URI Too Long");
    }
    const auto *info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
    auto *exchange = static_cast<ExchangePtr *>(info->socket_context);
    *exchange = std::make_shared<HttpExchange>(uri);
    return exchange;
}

MHD_Result HttpDaemon::Callbacks::onRequest(void *self, MHD_Connection *connection, const char *,
                                            const char *method, const char *version,
                                            const char *upload, std::size_t *uploadSize,
                                            void **request)
{
    auto &daemon = *static_cast<HttpDaemon *>(self);
    const auto &exchange = *static_cast<ExchangePtr *>(*request);
    if (daemon.m_connections.isCut(connection))
        return MHD_NO;

    if (!exchange->hasBegun()) {
        daemon.begin(connection, *exchange, exchange->readHead(connection, method, version));
        if (!exchange->isDecided())
            return MHD_YES;
    } else if (*uploadSize > 0) {
        exchange->addBody(upload, *uploadSize, daemon.m_options.maxBodyBytes);
        *uploadSize = 0;
        return MHD_YES;
    } else if (exchange->isTooLarge()) {
        daemon.refuse(*exchange, daemon.m_admission.tooLargeBody());
    } else if (!exchange->isDecided()) {
        if (daemon.suspend(exchange, connection))
            return MHD_YES;
        exchange->refuse(503);
    }
    daemon.m_connections.enter(connection, exchange->isStream() ? Phase::Stream : Phase::Answer);
    return exchange->sendAnswer(connection) ? MHD_YES : MHD_NO;
}

void HttpDaemon::Callbacks::onCompleted(void *self, MHD_Connection *connection, void **request,
                                        MHD_RequestTerminationCode)
{
    if (*request != nullptr)
        static_cast<ExchangePtr *>(*request)->reset();
    *request = nullptr;
    static_cast<HttpDaemon *>(self)->m_connections.awaitNext(connection);
}
