#pragma once

#include <support/LoopbackServer.h>
#include <support/ScriptedAnswer.h>
#include <support/ScriptedRequest.h>

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <functional>
#include <mutex>

namespace support {

/**
 * A TCP peer on the loopback address that reads HTTP requests completely, keeps them, and answers
 * each as the test's script says: well, badly, slowly or never.
 *
 * Owner: the test.
 * Thread: those of a LoopbackServer, so that a client may block the test's thread. Every member is
 * for the test's thread.
 * Errors: the constructor and `comeUp` throw std::system_error if there is no port.
 * Shut-down: the destructor and `goDown` cut all connections, whatever they are at, and return when
 * the threads have ended.
 */
class ScriptedServer
{
public:
    using Request = ScriptedRequest;

    /// Listens on a port that the system chose and answers 200.
    ScriptedServer();

    int port() const { return m_server.port(); }
    QUrl url(const QString &path = QStringLiteral("/")) const;

    /// The answer to every request from now on.
    void answer(const ScriptedAnswer &standing);
    /// From now on each request is answered as `script` says, which runs on a thread of
    /// the server's and calls nothing of it.
    void answerBy(std::function<ScriptedAnswer(const Request &)> script);
    /// The answers to the next requests, one each; then the standing answer is given again.
    void answerNext(const QList<ScriptedAnswer> &queue);

    /// Closes the port and cuts the connections; what was received stays known.
    void goDown() { m_server.goDown(); }
    /// Listens again, on the same port.
    void comeUp() { m_server.comeUp(); }

    QList<Request> requests() const;
    /// Those that were not taken before, which are then forgotten.
    QList<Request> takeRequests();
    qsizetype requestCount() const;
    /// How many connections were accepted, whether or not a request came on them.
    int connectionCount() const { return m_server.connectionCount(); }
    /// How much the peers were willing to take so far.
    qint64 bytesSent() const;

private:
    void serve(int socket, int connection);
    ScriptedAnswer noteArrival(Request request);
    bool give(int socket, const ScriptedAnswer &answer);
    bool send(int socket, const QByteArray &bytes);

    mutable std::mutex m_mutex; // guards all that follows but the last
    std::function<ScriptedAnswer(const Request &)> m_script;
    QList<ScriptedAnswer> m_queue;
    QList<Request> m_requests;
    qint64 m_bytesSent = 0;
    LoopbackServer m_server;
};

} // namespace support
