#pragma once

#include <HostExport.h>
#include <HttpServerOptions.h>
#include <RequestHeader.h>
#include <ResponseHeader.h>

#include <QByteArray>
#include <QObject>

#include <memory>

class HeldRequest;
class HttpDaemon;

/**
 * A small HTTP server: hands each complete request to its owner's thread and sends what that
 * answers.
 *
 * Owner: whoever created it.
 * Thread: the network runs on a thread of the server's own; `requestReceived` is emitted on the
 * thread that created the server, one request at a time, in the order of their arrival. All members
 * belong to that thread.
 * Errors: a port that cannot be bound is logged and leaves `isListening` false. What is no
 * unambiguous HTTP request, or is beyond the limits of the options, is answered 4xx or its
 * connection is closed, and never delivered; a request that nobody answers is answered 503.
 * Shut-down: the destructor closes the connections and frees the port before it returns; what still
 * waits gets 503 or no answer. Not to be destroyed within a slot connected to `requestReceived`.
 */
class HOST_EXPORT HttpServer : public QObject
{
    Q_OBJECT

public:
    /// Listens on `port` with the options of the settings group "HttpServer".
    explicit HttpServer(int port);
    /// Listens on `port`; 0 lets the system choose one.
    HttpServer(int port, const HttpServerOptions &options);
    ~HttpServer() override;

    bool isListening() const;
    /// The port listened on; 0 if there is none.
    int port() const;
    /// Why the server does not listen; empty while it does.
    QString errorString() const;

    /// Answers the request being delivered; only within a slot connected to `requestReceived`, and
    /// only the first answer counts. Harmless if the peer has gone.
    virtual void sendResponse(const ResponseHeader &header, const QByteArray &body);
    /// Takes the request being delivered over, to be answered later; null if it has been answered,
    /// or outside of a slot connected to `requestReceived`.
    std::shared_ptr<HeldRequest> holdRequest();

Q_SIGNALS:
    /// A complete request has arrived: its header and its body as it came.
    void requestReceived(const RequestHeader &header, const QByteArray &content);

private:
    const std::unique_ptr<HttpDaemon> m_daemon;
};
