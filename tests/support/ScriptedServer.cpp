#include <support/ScriptedServer.h>

#include <sys/socket.h>

#include <utility>

namespace support {

namespace {

std::function<ScriptedAnswer(const ScriptedRequest &)> always(const ScriptedAnswer &answer)
{
    return [answer](const ScriptedRequest &) { return answer; };
}

} // namespace

ScriptedServer::ScriptedServer()
    : m_script(always(ScriptedAnswer::ok()))
    , m_server([this](int socket, int connection) { serve(socket, connection); })
{
}

QUrl ScriptedServer::url(const QString &path) const
{
    return {QStringLiteral("http://127.0.0.1:%1%2").arg(port()).arg(path)};
}

void ScriptedServer::answer(const ScriptedAnswer &standing)
{
    answerBy(always(standing));
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

QList<ScriptedServer::Request> ScriptedServer::requests() const
{
    const std::lock_guard guard(m_mutex);
    return m_requests;
}

QList<ScriptedServer::Request> ScriptedServer::takeRequests()
{
    const std::lock_guard guard(m_mutex);
    return std::exchange(m_requests, {});
}

qsizetype ScriptedServer::requestCount() const
{
    const std::lock_guard guard(m_mutex);
    return m_requests.size();
}

qint64 ScriptedServer::bytesSent() const
{
    const std::lock_guard guard(m_mutex);
    return m_bytesSent;
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
    if (!m_server.pause(answer.delay) || !send(socket, answer.bytes))
        return false;
    while (!answer.repeated.isEmpty()) {
        if (!m_server.pause(answer.pause) || !send(socket, answer.repeated))
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

} // namespace support
