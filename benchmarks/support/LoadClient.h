#pragma once

#include <string>
#include <vector>

namespace bench {

/**
 * A client that keeps a server as busy as its connections can: sends the next request on each as
 * soon as the last answer on it is whole.
 *
 * Owner: a benchmark. Thread: the caller's, which `run` blocks.
 * Errors: the constructor throws std::system_error without its connections, `run` throws
 * std::runtime_error if an answer does not come, is not 200, or has a body.
 * Shut-down: the destructor closes the connections.
 */
class LoadClient
{
public:
    /// `request` is sent as it stands.
    LoadClient(int port, int connections, std::string request);
    ~LoadClient();
    LoadClient(const LoadClient &) = delete;
    LoadClient &operator=(const LoadClient &) = delete;

    /// Sends so many requests, at least one for each connection; returns when all are answered.
    void run(int requests);

private:
    struct Connection
    {
        int socket;
        std::string unread; // what is not yet a whole answer
    };

    void send(const Connection &connection) const;
    static bool readAnswer(Connection &connection);

    const std::string m_request;
    const int m_events; // an epoll descriptor
    std::vector<Connection> m_connections;
};

/// A POST of JSON to the root of a server on this machine, as a display sends its requests.
std::string postOf(int port, const std::string &json);

} // namespace bench
