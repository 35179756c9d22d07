#include <support/ScriptedServer.h>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace support {

namespace {

[[noreturn]] void fail(const char *what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

} // namespace

ScriptedServer::ScriptedServer()
{
    answer(ScriptedAnswer::ok());
    comeUp();
}

ScriptedServer::~ScriptedServer()
{
    goDown();
}

QUrl ScriptedServer::url(const QString &path) const
{
    return {QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path)};
}

void ScriptedServer::answer(const ScriptedAnswer &standing)
{
    answerBy([standing](const Request &) { return standing; });
}

void ScriptedServer::answerBy(std::function<ScriptedAnswer(const Request &)> script)
{
    const std::lock_guard guard(m_mutex);
    m_script = std::move(script);
}

void ScriptedServer::answerNext(const QList<ScriptedAnswer> &queue)
{
    const std::lock_guard guard(m_mutex);
    m_queue = queue;
}

void ScriptedServer::goDown()
{
    if (!m_accepting.joinable())
        return;
    {
        const std::lock_guard guard(m_mutex);
        m_down = true;
        ::shutdown(m_listener, SHUT_RDWR);
        for (const int socket : m_sockets)
            ::shutdown(socket, SHUT_RDWR);
    }
    m_woken.notify_all();
    m_accepting.join();
    ::close(m_listener);
    for (auto &thread : m_serving)
        thread.join();
    m_serving.clear();
}

void ScriptedServer::comeUp()
{
    if (m_accepting.joinable())
        return;
    listen();
    {
        const std::lock_guard guard(m_mutex);
        m_down = false;
    }
    m_accepting = std::thread([this, listener = m_listener] { acceptConnections(listener); });
}

QList<ScriptedServer::Request> ScriptedServer::requests() const
{
    const std::lock_guard guard(m_mutex);
    return m_requests;
}

qsizetype ScriptedServer::requestCount() const
{
    const std::lock_guard guard(m_mutex);
    return m_requests.size();
}

int ScriptedServer::connectionCount() const
{
    const std::lock_guard guard(m_mutex);
    return m_connections;
}

qint64 ScriptedServer::bytesSent() const
{
    const std::lock_guard guard(m_mutex);
    return m_bytesSent;
}

void ScriptedServer::listen()
{
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int reuse = 1; // connections of the last time may linger on the port
    ::setsockopt(m_listener, SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof reuse);

    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(m_port));
    socklen_t size = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    if (::bind(m_listener, generic, size) != 0 || ::listen(m_listener, SOMAXCONN) != 0 ||
        ::getsockname(m_listener, generic, &size) != 0) {
        ::close(m_listener);
        fail("ScriptedServer: no port to listen on");
    }
    m_port = ntohs(address.sin_port);
}

void ScriptedServer::acceptConnections(int listener)
{
    for (;;) {
        const int socket = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        const std::lock_guard guard(m_mutex);
        if (m_down || socket < 0) {
            if (socket >= 0)
                ::close(socket);
            return;
        }
        m_sockets.insert(socket);
        const int connection = m_connections++;
        m_serving.emplace_back([this, socket, connection] { serve(socket, connection); });
    }
}

void ScriptedServer::serve(int socket, int connection)
{
    QByteArray received;
    Request request;
    while (readRequest(socket, received, request)) {
        request.connection = connection;
        request.arrival = std::chrono::steady_clock::now();
        if (!give(socket, noteArrival(request)))
            break;
    }
    release(socket);
}

ScriptedAnswer ScriptedServer::noteArrival(Request request)
{
    const std::lock_guard guard(m_mutex);
    m_requests.append(std::move(request));
    return m_queue.isEmpty() ? m_script(m_requests.constLast()) : m_queue.takeFirst();
}

/// Whether the connection is there for another request.
bool ScriptedServer::give(int socket, const ScriptedAnswer &answer)
{
    if (!pause(answer.delay) || !send(socket, answer.bytes))
        return false;
    while (!answer.repeated.isEmpty()) {
        if (!pause(answer.pause) || !send(socket, answer.repeated))
            return false;
    }
    return !answer.closes;
}

bool ScriptedServer::send(int socket, const QByteArray &bytes)
{
    for (qsizetype sent = 0; sent < bytes.size();) {
        const auto size = ::send(socket, bytes.constData() + sent,
                                 static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (size < 0)
            return false;
        sent += size;
        const std::lock_guard guard(m_mutex);
        m_bytesSent += size;
    }
    return true;
}

/// False when the server goes down meanwhile.
bool ScriptedServer::pause(std::chrono::milliseconds time)
{
    std::unique_lock guard(m_mutex);
    return !m_woken.wait_for(guard, time, [this] { return m_down; });
}

void ScriptedServer::release(int socket)
{
    const std::lock_guard guard(m_mutex); // so that goDown never shuts down another's descriptor
    m_sockets.erase(socket);
    ::close(socket);
}

} // namespace support
