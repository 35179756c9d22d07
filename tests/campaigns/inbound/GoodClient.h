#pragma once

#include <QByteArray>

#include <chrono>
#include <string>
#include <thread>

namespace inbound {

/**
 * A display among whatever else is going on: asks for a picture time and again while it lives, each
 * time on another connection, and notes how long the answer takes.
 *
 * Owner: the test. Thread: it asks on one of its own; `end` is called by the owner, the results are
 * read after that. Shut-down: `end`, and the destructor, wait for the answer that is due.
 */
class GoodClient
{
public:
    explicit GoodClient(int port);
    /// The code of the goods whose picture is asked for, and of no others'.
    static QByteArray goods() { return "good-client"; }

    void end();
    int asked() const { return m_asked; }
    /// Of them, those not answered 200.
    int missed() const { return m_missed; }
    std::chrono::milliseconds worst() const { return m_worst; }

    /// What it sends.
    static QByteArray request();
    /// Asks once. Returns the status; 0: none within the deadline.
    static int ask(int port, std::chrono::milliseconds deadline);

private:
    void run(const std::stop_token &stop);

    const int m_port;
    int m_asked = 0;
    int m_missed = 0;
    std::chrono::milliseconds m_worst{};
    std::jthread m_thread; // last: it uses all the others
};

} // namespace inbound
