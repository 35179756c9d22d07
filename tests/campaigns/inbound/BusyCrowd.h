#pragma once

#include "Peer.h"

#include <QByteArray>

#include <atomic>
#include <stop_token>
#include <thread>
#include <vector>

namespace inbound {

/**
 * Clients that ask well and without a pause, the next request before the answer to the last one, on
 * connections that they keep, and that come back when those are closed.
 *
 * Owner: the test. Thread: it asks on one of its own; all members are for the test's. Shut-down:
 * the destructor leaves without a word.
 */
class BusyCrowd
{
public:
    BusyCrowd(int port, int count);

    /// What it has been sent so far.
    qint64 bytesReceived() const { return m_bytesReceived; }

private:
    void run(const std::stop_token &stop);
    void ask(Peer &peer);
    void waitForAnswers() const;

    const int m_port;
    std::vector<Peer> m_peers;
    std::atomic<qint64> m_bytesReceived = 0;
    std::jthread m_thread; // last: it uses all the others
};

} // namespace inbound
