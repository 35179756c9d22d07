#pragma once

#include <QByteArray>

#include <chrono>

namespace inbound {

/**
 * A client's end of a TCP connection to the loopback address, as close to the system as it gets:
 * without a buffer of its own, without events, and with a rough end if one is asked for.
 *
 * Thread: any one at a time. Errors: the constructor throws std::system_error if there is no
 * descriptor.
 */
class Peer
{
public:
    using milliseconds = std::chrono::milliseconds;

    /// A socket that is not connected yet. `receiveBuffer` in bytes; 0: the system's choice.
    explicit Peer(int receiveBuffer = 0);
    ~Peer();
    Peer(Peer &&other) noexcept;
    Peer &operator=(Peer &&other) noexcept;

    /// Begins to connect. False if the system refuses at once.
    bool connect(int port) const;
    /// As much as fits; -1 if the connection is over.
    qsizetype sendSome(const QByteArray &bytes) const;
    /// All of it; false if that takes longer, or the connection is over.
    bool sendAll(const QByteArray &bytes, milliseconds deadline) const;
    /// Appends what has arrived. False once the other end has closed the connection.
    bool receive(QByteArray &to) const;
    /// Appends so many bytes; false if fewer come before the end, or in time.
    bool receiveExactly(QByteArray &to, qsizetype size, milliseconds deadline) const;
    /// The status of the next answer; 0 if none comes.
    int awaitAnswer(milliseconds deadline) const;
    /// Waits for anything to receive, the end included.
    bool waitForArrival(milliseconds deadline) const;

    /// Sends no more.
    void finish() const;
    /// Makes the end a reset instead of a good-bye.
    void beRough() const;

    int socket() const { return m_socket; }

private:
    void close() const;

    int m_socket;
};

} // namespace inbound
