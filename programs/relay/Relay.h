#pragma once

#include <relay/Exchange.h>

#include <HttpGuard.h>
#include <HttpServer.h>

#include <QObject>
#include <QUrl>

#include <chrono>

/**
 * Stands between the two sides of an HTTP connection: listens on the loopback address, sends each
 * request on to one target, gives the answer back, and tells of both.
 *
 * What arrives is the request as it was made, to its method, path, body and end-to-end header
 * fields, at most once. Nothing is followed. Requests do not wait for each other.
 *
 * Owner: whoever wants to see what passes. Thread: the main thread, and it never blocks.
 * Errors: a port that cannot be bound leaves `isListening` false. A target that gives no whole
 * answer, of at most 16 MiB and within `patience`, is shown to the client as what it is: its
 * connection is closed without an answer. A client that leaves ends its request; one that has only
 * closed its own direction counts as gone. Whoever asks for another name than that of the loopback
 * address is answered 403: the target is asked under its own, so it could not tell.
 * Shut-down: the destructor closes the connections of both sides; what was under way is not told.
 * Not to be destroyed within a slot connected to `exchanged`.
 */
class Relay : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds defaultPatience = std::chrono::seconds(60);

    /// Listens on `port`, 0 standing for one that the system chooses, for what is to go to
    /// `target`, of whose address, by "http", only the host and the port count.
    Relay(int port, const QUrl &target, std::chrono::milliseconds patience = defaultPatience);
    ~Relay() override;

    bool isListening() const { return m_server.isListening(); }
    /// The port listened on; 0 if there is none.
    int port() const { return m_server.port(); }
    /// Why it does not listen; empty while it does.
    QString errorString() const { return m_server.errorString(); }

Q_SIGNALS:
    /// A request has its answer, or will have none. Emitted on the main thread, just before the
    /// client is told.
    void exchanged(const Exchange &exchange);

private:
    void receive(const RequestHeader &header, const QByteArray &content);

    const QByteArray m_target; // its address without a path
    const std::chrono::milliseconds m_patience;
    quint64 m_received = 0;
    HttpServer m_server;
    const HttpGuard m_guard;
};
