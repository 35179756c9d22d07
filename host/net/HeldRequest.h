#pragma once

#include <HostExport.h>
#include <ResponseHeader.h>

#include <QByteArray>
#include <QPointer>

#include <memory>

class HttpDaemon;
class HttpExchange;
class HttpServer;
class HttpStream;
struct MHD_Connection;

/**
 * A request that was taken over from its delivery, to be answered later or otherwise than by a
 * whole body.
 *
 * Owner: who took it with HttpServer::holdRequest. Thread: the server's.
 * Errors: only the first answer counts; harmless if the client or the server has gone.
 * Shut-down: the destructor answers 503 what is still unanswered.
 */
class HOST_EXPORT HeldRequest
{
public:
    HeldRequest(HttpServer *server, HttpDaemon &daemon, std::shared_ptr<HttpExchange> exchange,
                MHD_Connection *connection);
    ~HeldRequest();
    Q_DISABLE_COPY_MOVE(HeldRequest)

    /// Whether it is unanswered and its client is still there, as far as the connection tells: a
    /// client that has closed only its own direction counts as gone.
    bool isAwaited() const;
    void answer(const ResponseHeader &header, const QByteArray &body);
    /// Answers with a body that is yet to come, without a deadline; null if there is nobody to
    /// answer any more.
    std::shared_ptr<HttpStream> answerWithStream(const ResponseHeader &header);
    /// Closes the connection without an answer.
    void drop();

private:
    bool isAnswerable() const;
    void resume();

    const QPointer<HttpServer> m_server; // owns the daemon
    HttpDaemon &m_daemon;
    bool m_answered = false;
    const std::shared_ptr<HttpExchange> m_exchange;
    MHD_Connection *const m_connection;
};
