#include "HttpDaemonCallbacks.h"

#include <HeldRequest.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QScopedValueRollback>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace {

using namespace std::chrono_literals;
using Phase = HttpConnections::Phase;

/// Deadlines may be further off than the system can be told.
constexpr std::chrono::milliseconds longestWait = 1h;
/// How soon to look again whether there is a descriptor for a client that waits for one.
constexpr auto pauseWithoutDescriptors = 100ms;
constexpr int noDescriptor = -1;
/// Beyond the limit: connections that are being closed to make room.
constexpr unsigned connectionReserve = 16;
/// The library's memory for a connection: it keeps a record for each field, and builds the head of
/// the answer beside that of the request.
constexpr std::size_t poolPerHeaderByte = 2;
constexpr std::size_t poolReserveBytes = 8192;

const Log4Qt::Logger *logger()
{
    return Log4Qt::LogManager::logger(QStringLiteral("httpserver"));
}

bool isAnyDescriptorFree(int existing)
{
    const int copy = ::fcntl(existing, F_DUPFD_CLOEXEC, 0);
    if (copy < 0)
        return false;
    ::close(copy);
    return true;
}

} // namespace

void HttpDaemon::StopDaemon::operator()(MHD_Daemon *daemon) const
{
    MHD_stop_daemon(daemon);
}

HttpDaemon::HttpDaemon(HttpServer *server, int port, HttpServerOptions options)
    : m_server(server)
    , m_options(std::move(options))
    , m_admission(m_options)
    , m_connections(m_options, m_refusals)
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

    // clang-format off
    m_handle.reset(MHD_start_daemon(
        MHD_USE_EPOLL | MHD_ALLOW_SUSPEND_RESUME, 0, nullptr, nullptr, &Callbacks::onRequest, this,
        MHD_OPTION_SOCK_ADDR, &address, MHD_OPTION_URI_LOG_CALLBACK, &Callbacks::onUri, this,
        MHD_OPTION_NOTIFY_COMPLETED, &Callbacks::onCompleted, this, MHD_OPTION_NOTIFY_CONNECTION,
        &Callbacks::onConnection, this, MHD_OPTION_CONNECTION_LIMIT,
        static_cast<unsigned>(m_options.maxConnections) + connectionReserve,
        MHD_OPTION_CONNECTION_TIMEOUT, static_cast<unsigned>(m_options.idleTimeout.count()),
        MHD_OPTION_CONNECTION_MEMORY_LIMIT,
        static_cast<std::size_t>(m_options.maxHeaderBytes) * poolPerHeaderByte + poolReserveBytes,
        MHD_OPTION_END));
    // clang-format on
    if (m_handle)
        m_thread = std::jthread([this](const std::stop_token &stop) { run(stop); });
    else
        m_error = qt_error_string(errno);
}

void HttpDaemon::run(const std::stop_token &stop)
{
    const int events = MHD_get_daemon_info(m_handle.get(), MHD_DAEMON_INFO_EPOLL_FD)->epoll_fd;
    while (!stop.stop_requested()) {
        m_wakeUp.waitFor(events, waitingTime());
        MHD_run(m_handle.get());
        m_connections.cutOverdue();
        // Without a connection whose end could give one back, the library would try without a
        // pause.
        if (m_connections.isEmpty() && !isAnyDescriptorFree(events))
            m_wakeUp.waitFor(noDescriptor, pauseWithoutDescriptors);
    }
}

/// The library stops accepting when connections or descriptors run out, and goes on only in the
/// round after one in which a connection has ended; nothing else may wake it for that.
std::chrono::milliseconds HttpDaemon::waitingTime()
{
    if (std::exchange(m_hasRoom, false))
        return 0ms;
    const auto own = std::chrono::ceil<std::chrono::milliseconds>(m_connections.nextDeadline() -
                                                                  HttpConnections::Clock::now());
    const auto time = std::clamp<std::chrono::milliseconds>(own, 0ms, longestWait);
    MHD_UNSIGNED_LONG_LONG librarys = 0;
    return MHD_get_timeout(m_handle.get(), &librarys) == MHD_NO
               ? time
               : std::min(time, std::chrono::milliseconds(librarys));
}

HttpDaemon::~HttpDaemon()
{
    if (!m_handle)
        return;
    {
        // The library wants no suspended connection when it stops.
        const std::lock_guard guard(m_mutex);
        m_closing = true;
        for (const auto &[exchange, connection] : m_suspended) {
            exchange->refuse(503);
            MHD_resume_connection(connection);
        }
        m_suspended.clear();
    }
    endStreams();
    m_thread.request_stop();
    m_wakeUp.wake();
    m_thread.join();
    MHD_run(m_handle.get()); // sends the last answers
}

int HttpDaemon::port() const
{
    if (!m_handle)
        return 0;
    return MHD_get_daemon_info(m_handle.get(), MHD_DAEMON_INFO_BIND_PORT)->port;
}

/// Takes a request whose header is complete, or gives it its refusal before the body is read.
void HttpDaemon::begin(MHD_Connection *connection, HttpExchange &exchange,
                       const HttpRequestHead &head)
{
    exchange.begin(head);
    if (const auto refusal = m_admission.refusal(head, exchange.header()))
        refuse(exchange, *refusal);
    else
        m_connections.enter(connection, Phase::Body);
}

void HttpDaemon::refuse(HttpExchange &exchange, const HttpAdmission::Refusal &refusal)
{
    m_refusals.noteRequest(refusal.kind, exchange.header().path(), refusal.why);
    exchange.refuse(refusal.status);
}

bool HttpDaemon::suspend(const ExchangePtr &exchange, MHD_Connection *connection)
{
    {
        const std::lock_guard guard(m_mutex);
        if (m_closing)
            return false;
        m_connections.enter(connection, Phase::Waiting);
        MHD_suspend_connection(connection);
        m_suspended.emplace(exchange.get(), connection);
    }
    // Without the lock, which the woken thread is about to take. If the server is being destroyed
    // meanwhile, it answers, waits for this thread, and drops the event.
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
    if (delivery.taken)
        return;
    delivery.exchange->refuse(503);
    resume(*delivery.exchange, delivery.connection);
}

void HttpDaemon::answerCurrent(const ResponseHeader &header, const QByteArray &body)
{
    if (m_current == nullptr || m_current->taken)
        return;
    m_current->taken = true;
    m_current->exchange->setAnswer(header, body);
    resume(*m_current->exchange, m_current->connection);
}

std::shared_ptr<HeldRequest> HttpDaemon::holdCurrent()
{
    if (m_current == nullptr || m_current->taken)
        return nullptr;
    m_current->taken = true;
    return std::make_shared<HeldRequest>(m_server, *this, m_current->exchange,
                                         m_current->connection);
}

std::shared_ptr<HttpStreamSource> HttpDaemon::createStream()
{
    std::erase_if(m_streams, [](const auto &stream) { return stream.expired(); });
    auto stream = std::make_shared<HttpStreamSource>(m_wakeUp);
    m_streams.push_back(stream);
    return stream;
}

/// From here on the exchange belongs to the network thread again.
void HttpDaemon::resume(HttpExchange &exchange, MHD_Connection *connection)
{
    {
        const std::lock_guard guard(m_mutex);
        m_suspended.erase(&exchange);
        MHD_resume_connection(connection);
    }
    m_wakeUp.wake();
}

void HttpDaemon::endStreams()
{
    for (const auto &each : m_streams) {
        if (const auto stream = each.lock())
            stream->end();
    }
}
