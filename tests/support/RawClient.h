#pragma once

#include <support/Wait.h>

#include <QByteArray>
#include <QTcpSocket>

namespace support {

/**
 * A TCP connection to the loopback address on which a test writes bytes and reads HTTP answers.
 *
 * Thread: that of the test, whose events run while it waits.
 */
class RawClient
{
public:
    struct Answer
    {
        int status = 0; // 0: none arrived
        QByteArray header;
        QByteArray body;
    };

    /// Connects, and waits until that is done.
    explicit RawClient(int port);

    void send(const QByteArray &bytes);
    /// Waits for the next answer and takes it off what has arrived.
    Answer answer(std::chrono::milliseconds deadline = 30s);
    /// Waits for the peer to close the connection.
    bool waitForClose(std::chrono::milliseconds deadline = 30s);
    /// Leaves without a good-bye.
    void abort() { m_socket.abort(); }

    bool isConnected() const;
    /// What has arrived and was not taken yet.
    QByteArray received();

    /// A request with a Content-Length and whatever else is given, each field ending with CR LF.
    static QByteArray request(const QByteArray &path, const QByteArray &body,
                              const QByteArray &fields = {});

private:
    bool takeAnswer(Answer &answer);

    QTcpSocket m_socket;
    QByteArray m_received;
};

} // namespace support
