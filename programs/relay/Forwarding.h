#pragma once

#include <relay/Exchange.h>
#include <relay/HttpTransfer.h>

#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>
#include <thread>

class HeldRequest;

/**
 * One request on its way through a Relay: sends it on, and gives its client the answer, or the end
 * of the connection if there is none.
 *
 * Owner: the Relay. Thread: the main thread; the request is sent from a thread of its own.
 * Errors: `ended` tells them. Shut-down: the destructor closes both connections; nothing is told.
 */
class Forwarding : public QObject
{
    Q_OBJECT

public:
    /// `exchange` is what is known of it so far; `patience` the time for the whole answer.
    Forwarding(std::shared_ptr<HeldRequest> held, Exchange exchange, const HttpRequest &request,
               std::chrono::milliseconds patience, QObject *parent);
    ~Forwarding() override;

Q_SIGNALS:
    /// Emitted once, on the main thread, just before the client is told.
    void ended(const Exchange &exchange);

private:
    void takeAnswer(const HttpAnswer &answer);
    void giveUpIfNobodyWaits();

    const std::shared_ptr<HeldRequest> m_held;
    Exchange m_exchange;
    QTimer m_clientCheck;
    bool m_clientHasGone = false;
    std::jthread m_thread; // last: it calls this object
};
