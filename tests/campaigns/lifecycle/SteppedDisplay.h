#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <string>

/**
 * A display that does nothing by itself: its owner takes each step of a conversation when it wants
 * it, so that a post can be stopped at any of them.
 *
 * Owner and thread: the caller's; no two steps at once. It serves one connection, the latest.
 * Errors: a step that cannot be taken throws std::system_error, or std::runtime_error after 10 s.
 * Shut-down: `leave` or the destructor cut the connection and close the port.
 */
class SteppedDisplay
{
public:
    /// Holds a port that the system chose, on which connections are refused.
    SteppedDisplay();
    ~SteppedDisplay();
    Q_DISABLE_COPY_MOVE(SteppedDisplay)

    int port() const { return m_port; }
    std::string url() const;

    /// From now on connections are taken.
    void listen();
    /// From now on a connection is neither taken nor refused: the system has no room for it.
    void listenWithoutRoom();
    /// Whether the system tries to connect somebody to the port.
    bool isBeingConnected() const;

    /// Waits for a request and reads all of it.
    void receive();
    /// Answers the request that was received last with 200.
    void answer();

    void leave();

private:
    void accept();

    int m_listener = -1;
    int m_peer = -1;
    int m_connection = -1;
    int m_port = 0;
    QByteArray m_received; // beyond the last request
};
