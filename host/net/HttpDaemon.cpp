#include "HttpDaemon.h"

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QScopedValueRollback>

#include <arpa/inet.h>
#include <microhttpd.h>
#include <netinet/in.h>

#include <cerrno>
#include <utility>

namespace {

const Log4Qt::Logger *logger()
{
    return Log4Qt::LogManager::logger(QStringLiteral("httpserver"));
}

} // namespace

struct HttpDaemon::Callbacks
{
    static void *onUri(void *self, const char *uri, MHD_Connection *connection);
    static MHD_Result onRequest(void *self, MHD_Connection *connection, const char *url,
                                const char *method, const char *version, const char *upload,
                                std::size_t *uploadSize, void **request);
    static void onCompleted(void *self, MHD_Connection *connection, void **request,
                            MHD_RequestTerminationCode reason);
};

void HttpDaemon::StopDaemon::operator()(MHD_Daemon *daemon) const
{
    MHD_stop_daemon(daemon);
}

HttpDaemon::HttpDaemon(HttpServer *server, int port, HttpServerOptions options)
    : m_server(server), m_options(std::move(options))
{
    start(port);
    if (isListening())
        logger()->info(
            QStringLiteral("HTTP-сервер: открыт %1:%2").arg(m_options.address).arg(this->port()));
    else
        logger()->error(QStringLiteral("HTTP-сервер: не удалось открыть %1:%2: %3")
                            .arg(m_options.address)
                            .arg(port)
                            .arg(m_error));
}

void HttpDaemon::start(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    if (port < 0 || port > 65535) {
        m_error = QStringLiteral("порт вне диапазона 0–65535");
        return;
    }
    if (inet_pton(AF_INET, m_options.address.toLatin1().constData(), &address.sin_addr) != 1) {
        m_error = QStringLiteral("не адрес IPv4");
        return;
    }

    // clang-format off: an option a line
    m_handle.reset(MHD_start_daemon(
        MHD_USE_AUTO_INTERNAL_THREAD | MHD_ALLOW_SUSPEND_RESUME, 0, nullptr, nullptr,
        &Callbacks::onRequest, this, MHD_OPTION_SOCK_ADDR, &address, MHD_OPTION_URI_LOG_CALLBACK,
        &Callbacks::onUri, this, MHD_OPTION_NOTIFY_COMPLETED, &Callbacks::onCompleted, this,
        MHD_OPTION_CONNECTION_LIMIT, static_cast<unsigned>(m_options.maxConnections),
        MHD_OPTION_CONNECTION_TIMEOUT, static_cast<unsigned>(m_options.idleTimeout.count()),
        MHD_OPTION_CONNECTION_MEMORY_LIMIT, static_cast<std::size_t>(m_options.maxHeaderBytes),
        MHD_OPTION_END));
    // clang-format on
    if (!m_handle)
        m_error = qt_error_string(errno);
}

HttpDaemon::~HttpDaemon()
{
    if (!m_handle)
        return;
    // The library wants no suspended connection when it stops.
    const std::lock_guard guard(m_mutex);
    m_closing = true;
    for (const auto &[exchange, connection] : m_suspended) {
        exchange->setAnswer(503, QStringLiteral("Service Unavailable"));
        MHD_resume_connection(connection);
    }
    m_suspended.clear();
}

int HttpDaemon::port() const
{
    if (!m_handle)
        return 0;
    const auto *info = MHD_get_daemon_info(m_handle.get(), MHD_DAEMON_INFO_BIND_PORT);
    return info == nullptr ? 0 : info->port;
}

void *HttpDaemon::Callbacks::onUri(void *, const char *uri, MHD_Connection *)
{
    return new ExchangePtr(std::make_shared<HttpExchange>(QString::fromUtf8(uri))); // onCompleted
}

MHD_Result HttpDaemon::Callbacks::onRequest(void *self, MHD_Connection *connection, const char *,
                                            const char *method, const char *, const char *upload,
                                            std::size_t *uploadSize, void **request)
{
    auto &daemon = *static_cast<HttpDaemon *>(self);
    const auto &exchange = *static_cast<ExchangePtr *>(*request);
    const auto &options = daemon.m_options;

    if (exchange->begin(connection, method)) {
        if (!exchange->announcesMoreThan(options.maxBodyBytes))
            return MHD_YES;
        daemon.refuseBody(*exchange);
    } else if (*uploadSize > 0) {
        exchange->addBody(upload, *uploadSize, options.maxBodyBytes);
        *uploadSize = 0;
        return exchange->age() < options.bodyTimeout ? MHD_YES : MHD_NO;
    } else if (exchange->isTooLarge()) {
        daemon.refuseBody(*exchange);
    } else if (!exchange->hasAnswer()) {
        if (daemon.suspend(exchange, connection))
            return MHD_YES;
        exchange->setAnswer(503, QStringLiteral("Service Unavailable"));
    }
    return exchange->sendAnswer(connection) ? MHD_YES : MHD_NO;
}

void HttpDaemon::Callbacks::onCompleted(void *, MHD_Connection *, void **request,
                                        MHD_RequestTerminationCode)
{
    delete static_cast<ExchangePtr *>(*request);
    *request = nullptr;
}

void HttpDaemon::refuseBody(HttpExchange &exchange) const
{
    logger()->warn(QStringLiteral("HTTP-сервер: запрос %1 отклонён: тело больше %2 байт")
                       .arg(exchange.header().path())
                       .arg(m_options.maxBodyBytes));
    exchange.setAnswer(413, QStringLiteral("Content Too Large"));
}

bool HttpDaemon::suspend(const ExchangePtr &exchange, MHD_Connection *connection)
{
    const std::lock_guard guard(m_mutex);
    if (m_closing)
        return false;
    MHD_suspend_connection(connection);
    m_suspended.emplace(exchange.get(), connection);
    QMetaObject::invokeMethod(
        m_server,
        [this, exchange, connection] {
            deliver({exchange, connection});
        },
        Qt::QueuedConnection);
    return true;
}

void HttpDaemon::deliver(Delivery delivery)
{
    const QScopedValueRollback current(m_current, &delivery);
    Q_EMIT m_server->requestReceived(delivery.exchange->header(), delivery.exchange->body());
    if (delivery.answered)
        return;
    delivery.exchange->setAnswer(503, QStringLiteral("Service Unavailable"));
    resume(delivery);
}

void HttpDaemon::answerCurrent(const ResponseHeader &header, const QByteArray &body)
{
    if (m_current == nullptr || m_current->answered)
        return;
    m_current->answered = true;
    m_current->exchange->setAnswer(header, body);
    resume(*m_current);
}

/// From here on the exchange belongs to the network thread again.
void HttpDaemon::resume(const Delivery &delivery)
{
    const std::lock_guard guard(m_mutex);
    m_suspended.erase(delivery.exchange.get());
    MHD_resume_connection(delivery.connection);
}
