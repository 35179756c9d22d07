#pragma once

#include "HttpAdmission.h"
#include "HttpConnections.h"
#include "HttpExchange.h"
#include "HttpListener.h"
#include "HttpRefusals.h"
#include "HttpStreamSource.h"
#include "WakeUp.h"

#include <HttpServer.h>

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

struct MHD_Connection;
struct MHD_Daemon;

/**
 * The network side of an HttpServer: the port, libmicrohttpd's daemon, the thread that runs them,
 * and the requests that wait for an answer from the server's thread.
 *
 * Owner: the HttpServer, on whose thread it is created, used and destroyed.
 * Thread: requests are read and answered on the network thread; in between they are delivered, and
 * belong to the server's thread, while their connections are suspended. Errors: `error` says why it
 * does not listen. Shut-down: the destructor resumes what waits, since the library wants no
 * suspended connection, and joins the network thread.
 */
class HttpDaemon
{
public:
    HttpDaemon(HttpServer *server, int port, HttpServerOptions options);
    ~HttpDaemon();
    Q_DISABLE_COPY_MOVE(HttpDaemon)

    bool isListening() const { return m_handle != nullptr; }
    /// The port listened on; 0 if there is none.
    int port() const { return m_listener.port(); }
    QString error() const { return m_error; }

    /// Answers the request being delivered, if it has no answer yet.
    void answerCurrent(const ResponseHeader &header, const QByteArray &body);
    /// Hands over the request being delivered; null if there is none, or it is answered.
    std::shared_ptr<HeldRequest> holdCurrent();
    /// A body that comes piece by piece, to be set as an answer.
    std::shared_ptr<HttpStreamSource> createStream();
    /// Lets the network thread go on with an exchange that has been given its answer.
    void resume(HttpExchange &exchange, MHD_Connection *connection);

private:
    using ExchangePtr = std::shared_ptr<HttpExchange>;
    struct Callbacks; // of the library, on the network thread
    struct StopDaemon
    {
        void operator()(MHD_Daemon *daemon) const;
    };
    struct Delivery
    {
        ExchangePtr exchange;
        MHD_Connection *connection;
        bool taken = false; // answered, or held
    };

    void start(int port);
    void startThread();

    // On the network thread:
    void run(const std::stop_token &stop);
    std::chrono::milliseconds waitingTime() const;
    void acceptClient();
    void begin(MHD_Connection *connection, HttpExchange &exchange, const HttpRequestHead &head);
    void refuse(HttpExchange &exchange, const HttpAdmission::Refusal &refusal);
    bool suspend(const ExchangePtr &exchange, MHD_Connection *connection);

    // On the server's thread:
    void deliver(Delivery delivery);
    void endStreams();

    HttpServer *m_server;
    const HttpServerOptions m_options;
    QString m_error;
    Delivery *m_current = nullptr; // while `requestReceived` is being emitted
    std::mutex m_mutex;
    bool m_closing = false;                                 // guarded by m_mutex
    std::map<HttpExchange *, MHD_Connection *> m_suspended; // guarded by m_mutex
    std::vector<std::weak_ptr<HttpStreamSource>> m_streams; // of the server's thread
    const WakeUp m_wakeUp;
    const HttpAdmission m_admission;
    HttpListener m_listener;
    bool m_canAccept = true;       // or there is no room or no descriptor; of the network thread
    HttpRefusals m_refusals;       // of the network thread
    HttpConnections m_connections; // of the network thread
    std::unique_ptr<MHD_Daemon, StopDaemon> m_handle;
    std::jthread m_thread; // last: it uses all the others
};
