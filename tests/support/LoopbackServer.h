#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace support {

/**
 * Accepts connections on a port of the loopback address and serves each on a thread of its own.
 *
 * Owner: a fake server, as its last member, so that what `serve` uses is there as long as it runs.
 * Thread: it accepts on a thread of its own; every member is for the owner's thread, `pause` for
 * those that serve.
 * Errors: the constructor and `comeUp` throw std::system_error if there is no port.
 * Shut-down: the destructor and `goDown` cut all connections, so that what waits for one of them
 * returns, and wait for the threads that serve them.
 */
class LoopbackServer
{
public:
    /// Serves the connection with that number, 0 for the first; the socket is closed after it.
    using Serve = std::function<void(int socket, int connection)>;

    /// Listens on a port that the system chose.
    explicit LoopbackServer(Serve serve);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;

    int port() const { return m_port; }

    /// Closes the port and cuts the connections.
    void goDown();
    /// Listens again, on the same port.
    void comeUp();
    /// Cuts the present connections; the next ones are accepted.
    void cutConnections();

    /// How many connections were accepted.
    int connectionCount() const;

    /// Waits, but not beyond the moment at which the server goes down; false if it does.
    bool pause(std::chrono::milliseconds time);

private:
    void listen();
    void acceptConnections(int listener);
    void release(int socket);

    const Serve m_serve;
    int m_port = 0;
    int m_listener = -1;
    std::thread m_accepting;
    std::vector<std::thread> m_serving; // of m_accepting's thread, until that has been joined

    mutable std::mutex m_mutex; // guards all that follows
    std::condition_variable m_woken;
    bool m_down = true;
    std::set<int> m_sockets; // of the connections being served
    int m_connections = 0;
};

} // namespace support
