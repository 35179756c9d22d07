#pragma once

#include <relay/Exchange.h>
#include <relay/OneTimeBody.h>

#include <RequestHeader.h>

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <memory>

class HeldRequest;

/**
 * One request on its way through a Relay: sends it on, and gives its client the answer, or the end
 * of the connection if there is none.
 *
 * Each has a network access of its own: requests do not wait for each other, and none is lost on a
 * connection that the target was about to close.
 *
 * Owner: the Relay. Thread: the main thread.
 * Errors: `ended` tells them. Shut-down: the destructor closes both connections; nothing is told.
 */
class Forwarding : public QObject
{
    Q_OBJECT

public:
    /// `exchange` is what is known of it so far; `patience` the time for the whole answer.
    Forwarding(std::shared_ptr<HeldRequest> request, Exchange exchange, const RequestHeader &header,
               const QUrl &target, std::chrono::milliseconds patience);
    ~Forwarding() override;

Q_SIGNALS:
    /// Emitted once, on the main thread, just before the client is told.
    void ended(const Exchange &exchange);

private:
    void send(const RequestHeader &header, const QUrl &target);
    void readAnswer();
    void takeAnswer();
    void giveUp(const QString &error);
    void end();

    const std::shared_ptr<HeldRequest> m_request;
    Exchange m_exchange;
    OneTimeBody m_body;
    QNetworkAccessManager m_network;
    std::unique_ptr<QNetworkReply> m_reply;
    QTimer m_patience;
    QTimer m_clientCheck;
};
