#pragma once

#include "HttpExchange.h"

#include <HttpServer.h>

#include <map>
#include <memory>
#include <mutex>

struct MHD_Connection;
struct MHD_Daemon;

/**
 * The network side of an HttpServer: the library's daemon with its thread, and the requests that
 * wait for an answer from the server's thread.
 *
 * Owner: the HttpServer, on whose thread it is created, used and destroyed.
 * Thread: requests are read and answered on the library's thread; in between they are delivered,
 * and belong to the server's thread, while their connections are suspended. Errors: `error` says
 * why it does not listen. Shut-down: the destructor resumes what waits, since the library wants no
 * suspended connection, and joins the library's thread.
 */
class HttpDaemon
{
public:
    HttpDaemon(HttpServer *server, int port, HttpServerOptions options);
    ~HttpDaemon();
    Q_DISABLE_COPY_MOVE(HttpDaemon)

    bool isListening() const { return m_handle != nullptr; }
    int port() const;
    QString error() const { return m_error; }

    /// Answers the request being delivered, if it has no answer yet.
    void answerCurrent(const ResponseHeader &header, const QByteArray &body);

private:
    using ExchangePtr = std::shared_ptr<HttpExchange>;
    struct Callbacks; // of the library, on its thread
    struct StopDaemon
    {
        void operator()(MHD_Daemon *daemon) const;
    };
    struct Delivery
    {
        ExchangePtr exchange;
        MHD_Connection *connection;
        bool answered = false;
    };

    void start(int port);

    // On the library's thread:
    void refuseBody(HttpExchange &exchange) const;
    bool suspend(const ExchangePtr &exchange, MHD_Connection *connection);

    // On the server's thread:
    void deliver(Delivery delivery);
    void resume(const Delivery &delivery);

    HttpServer *m_server;
    const HttpServerOptions m_options;
    QString m_error;
    Delivery *m_current = nullptr; // while `requestReceived` is being emitted
    std::mutex m_mutex;
    bool m_closing = false;                                 // guarded by m_mutex
    std::map<HttpExchange *, MHD_Connection *> m_suspended; // guarded by m_mutex
    std::unique_ptr<MHD_Daemon, StopDaemon> m_handle;       // last: its thread uses all the others
};
