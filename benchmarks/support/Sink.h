#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace bench {

/**
 * The least a display can be: reads HTTP requests completely, notes when the last byte of each
 * came, and answers 200 without a body.
 *
 * Owner: a benchmark. Thread: one of its own; every member may be called from any other.
 * Errors: the constructor throws std::system_error if there is no port.
 * Shut-down: the destructor closes the port and all connections.
 */
class Sink
{
public:
    using Clock = std::chrono::steady_clock;

    Sink();
    ~Sink();
    Sink(const Sink &) = delete;
    Sink &operator=(const Sink &) = delete;

    int port() const { return m_port; }
    std::string url() const { return "http://127.0.0.1:" + std::to_string(m_port); }

    std::uint64_t arrivals() const;
    /// Blocks until that many requests have arrived in all; false if they do not within `atMost`.
    bool waitForArrivals(std::uint64_t count,
                         std::chrono::milliseconds atMost = std::chrono::seconds(10)) const;
    /// When the last byte of the latest request was read.
    Clock::time_point lastArrival() const;
    /// All that was read so far, headers included.
    std::uint64_t bytes() const;
    /// What its own thread has cost so far, which is not the register's.
    std::chrono::nanoseconds cpuTime() const;

private:
    void serve();
    void accept();
    bool read(int socket);

    int m_listener = -1;
    int m_end = -1; // an eventfd that ends the thread
    int m_port = 0;
    std::map<int, std::string> m_connections; // socket to what is not yet a whole request
    std::vector<char> m_block = std::vector<char>(1 << 18); // for what comes with one reading
    mutable std::mutex m_mutex;                             // guards the four that follow
    mutable std::condition_variable m_arrived;
    std::uint64_t m_arrivals = 0;
    std::uint64_t m_bytes = 0;
    Clock::time_point m_last;
    mutable std::thread m_thread; // asked for its clock by `cpuTime`
};

} // namespace bench
