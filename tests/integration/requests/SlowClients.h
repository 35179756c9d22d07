#pragma once

#include <support/DescriptorLimit.h>

#include <vector>

/**
 * Many connections that send a byte of a request now and then, and never finish it. One that the
 * server has closed is opened again.
 *
 * Thread: all of it on that of the test. Errors: a connection that the system refuses is not
 * counted by `openCount`.
 */
class SlowClients
{
public:
    SlowClients(int port, int count);
    ~SlowClients();
    SlowClients(const SlowClients &) = delete;
    SlowClients &operator=(const SlowClients &) = delete;

    /// A byte on each, and those that were closed opened again.
    void drip();
    int openCount() const;

private:
    int open() const;

    const support::DescriptorLimit m_limit = support::DescriptorLimit::highest(); // of both ends
    int m_port;
    std::vector<int> m_sockets;
};
