#pragma once

#include <adservice/Answer.h>

#include <QString>
#include <QUrlQuery>
#include <QtGlobal>

#include <functional>
#include <memory>
#include <optional>

struct MHD_Daemon;

/**
 * An HTTP server on the loopback address that gives each connection a thread of its own, so that an
 * answer may take its time. A connection serves one request.
 *
 * Thread: created and destroyed on one thread; requests are handled on those of the connections,
 * several at the same time. Errors: `errorString` says why it does not listen; a handler that
 * throws is answered 500, a body above the limit 413. Shut-down: the destructor closes all
 * connections and waits for their threads, so a handler that waits has to be told before.
 */
class ThreadedHttpServer
{
public:
    static constexpr qsizetype maxBodyBytes = 65'536;

    struct Request
    {
        QByteArray method;
        QString path;
        QUrlQuery query;
        QByteArray body;
    };
    /// Returns the answer; nothing for closing the connection without one.
    using Handler = std::function<std::optional<Answer>(const Request &)>;

    /// Port 0 stands for one that the system chooses.
    ThreadedHttpServer(int port, Handler handler);
    ~ThreadedHttpServer();
    Q_DISABLE_COPY_MOVE(ThreadedHttpServer)

    bool isListening() const { return m_daemon != nullptr; }
    QString errorString() const { return m_error; }
    int port() const;

private:
    struct Callbacks; // of the library, on the connections' threads
    struct StopDaemon
    {
        void operator()(MHD_Daemon *daemon) const;
    };

    std::optional<Answer> answer(const Request &request) const;

    const Handler m_handler;
    QString m_error;
    std::unique_ptr<MHD_Daemon, StopDaemon> m_daemon; // last: its threads use all the others
};
