#include "HttpDaemonCallbacks.h"

#include <HeldRequest.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QScopedValueRollback>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace {

using namespace std::chrono_literals;
using Phase = HttpConnections::Phase;

/// Deadlines may be further off than the system can be told.
constexpr std::chrono::milliseconds longestWait = 1h;
/// How soon to look again whether there is room, or a descriptor, for a client that waits for one.
constexpr std::chrono::milliseconds pauseWithoutRoom = 100ms;
constexpr int noDescriptor = -1;
/// The library's memory for a connection: it keeps a record for each field, and builds the head of
/// the answer beside that of the request.
constexpr std::size_t poolPerHeaderByte = 4;
constexpr std::size_t poolReserveBytes = 8192;

const Log4Qt::Logger *logger()
{
    return Log4Qt::LogManager::logger(QStringLiteral("httpserver"));
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
        logger()->info(QStringLiteral("HTTP-сервер: открыт %1:%2")
                           .arg(m_options.address, QString::number(this->port())));
    else
        logger()->error(QStringLiteral("HTTP-сервер: не удалось открыть %1:%2: %3")
                            .arg(m_options.address, QString::number(port), m_error));
}

void HttpDaemon::start(int port)
{
    m_error = m_listener.open(m_options.address, port);
    if (m_error.isEmpty() && m_wakeUp.error() != 0)
        m_error = qt_error_string(m_wakeUp.error());
    if (!m_error.isEmpty())
        return m_listener.close();

    // clang-format off
    m_handle.reset(MHD_start_daemon(
        MHD_USE_EPOLL | MHD_USE_NO_LISTEN_SOCKET | MHD_ALLOW_SUSPEND_RESUME, 0, nullptr, nullptr,
        &Callbacks::onRequest, this, MHD_OPTION_URI_LOG_CALLBACK, &Callbacks::onUri, this,
        MHD_OPTION_NOTIFY_COMPLETED, &Callbacks::onCompleted, this, MHD_OPTION_NOTIFY_CONNECTION,
        &Callbacks::onConnection, this, MHD_OPTION_CONNECTION_LIMIT,
        static_cast<unsigned>(m_options.maxConnections) + HttpConnections::reserve,
        MHD_OPTION_CONNECTION_TIMEOUT, static_cast<unsigned>(m_options.idleTimeout.count()),
        MHD_OPTION_CONNECTION_MEMORY_LIMIT,
        static_cast<std::size_t>(m_options.maxHeaderBytes) * poolPerHeaderByte + poolReserveBytes,
        MHD_OPTION_END));
    // clang-format on
    if (!m_handle)
        m_error = qt_error_string(errno);
    else
        startThread();
    if (!m_handle)
        m_listener.close();
}

void HttpDaemon::startThread()
{
    try {
        m_thread = std::jthread([this](const std::stop_token &stop) { run(stop); });
    } catch (const std::system_error &error) {
        m_error = qt_error_string(error.code().value());
        m_handle.reset();
    }
}

void HttpDaemon::run(const std::stop_token &stop)
{
    const int events = MHD_get_daemon_info(m_handle.get(), MHD_DAEMON_INFO_EPOLL_FD)->epoll_fd;
    while (!stop.stop_requested()) {
        m_wakeUp.waitFor(events, m_canAccept ? m_listener.descriptor() : noDescriptor,
                         waitingTime());
        MHD_run(m_handle.get());
        m_connections.cutOverdue();
        acceptClient();
    }
}

std::chrono::milliseconds HttpDaemon::waitingTime() const
{
    const auto own = std::chrono::ceil<std::chrono::milliseconds>(m_connections.nextDeadline() -
                                                                  HttpConnections::Clock::now());
    const auto time = std::clamp(own, 0ms, m_canAccept ? longestWait : pauseWithoutRoom);
    MHD_UNSIGNED_LONG_LONG librarys = 0;
    return MHD_get_timeout(m_handle.get(), &librarys) == MHD_NO
               ? time
               : std::min(time, std::chrono::milliseconds(librarys));
}

/// Takes one of the clients that wait; what there is no room or no descriptor for waits on. The
/// library begins with it when it runs next.
void HttpDaemon::acceptClient()
{
    m_canAccept = true;
    if (!m_listener.isAwaited())
        return;
    m_canAccept = m_connections.makeRoom();
    if (!m_canAccept)
        return;
    if (const auto client = m_listener.accept())
        MHD_add_connection(m_handle.get(), client->socket,
                           reinterpret_cast<const sockaddr *>(&client->address),
                           client->addressSize);
    else
        m_canAccept = !m_listener.lacksResources();
}

HttpDaemon::~HttpDaemon()
{
    if (!m_handle)
        return;
    {
        // The library wants no suspended connection when it stops. Those are refused then.
        const std::lock_guard guard(m_mutex);
        m_closing = true;
        for (const auto &suspended : m_suspended)
            MHD_resume_connection(suspended.second);
        m_suspended.clear();
    }
    endStreams();
    m_thread.request_stop();
    m_wakeUp.wake();
    m_thread.join();
    MHD_run(m_handle.get()); // sends the last answers
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
