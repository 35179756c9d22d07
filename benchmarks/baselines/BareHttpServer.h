#pragma once

#include <QObject>

#include <memory>

struct MHD_Connection;
struct MHD_Daemon;
struct MHD_Response;

namespace bench {

/**
 * A handler on libmicrohttpd with nothing around it: reads each request with its body, hands it to
 * the thread that created this, and answers 200 without a body. No limits, no deadlines, no header.
 *
 * Thread: one with an event loop. Errors: the constructor throws std::runtime_error.
 */
class BareHttpServer
{
public:
    BareHttpServer();
    ~BareHttpServer();
    Q_DISABLE_COPY_MOVE(BareHttpServer)

    int port() const;
    /// How many bodies the creator's thread has got.
    int received() const { return m_received; }

private:
    struct Callbacks;
    struct Request;
    struct Cleanup
    {
        void operator()(MHD_Daemon *daemon) const;
        void operator()(MHD_Response *response) const;
    };

    void receive(Request &request, MHD_Connection *connection);

    QObject m_receiver; // lives on the creator's thread
    int m_received = 0;
    std::unique_ptr<MHD_Response, Cleanup> m_answer;
    std::unique_ptr<MHD_Daemon, Cleanup> m_daemon; // last: its thread uses the others
};

} // namespace bench
