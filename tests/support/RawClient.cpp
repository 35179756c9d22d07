#include <support/RawClient.h>

#include <support/HttpHead.h>

#include <QHostAddress>

namespace support {

RawClient::RawClient(int port)
{
    m_socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    m_socket.waitForConnected();
}

void RawClient::send(const QByteArray &bytes)
{
    received(); // a write that fails drops what has come
    m_socket.write(bytes);
    m_socket.flush();
}

RawClient::Answer RawClient::answer(std::chrono::milliseconds deadline)
{
    Answer answer;
    waitFor([&] { return takeAnswer(answer); }, deadline);
    return answer;
}

bool RawClient::waitForClose(std::chrono::milliseconds deadline)
{
    return waitFor([this] { return !isConnected(); }, deadline);
}

bool RawClient::isConnected() const
{
    return m_socket.state() == QAbstractSocket::ConnectedState;
}

QByteArray RawClient::received()
{
    m_received += m_socket.readAll();
    return m_received;
}

QByteArray RawClient::request(const QByteArray &path, const QByteArray &body,
                              const QByteArray &fields)
{
    return "POST " + path + " HTTP/1.1\r\nHost: localhost\r\n" + fields +
           "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

bool RawClient::takeAnswer(Answer &answer)
{
    const auto all = received();
    const auto headerSize = all.indexOf("\r\n\r\n");
    if (headerSize < 0)
        return false;
    const auto bodyBegin = headerSize + 4;
    const auto length = contentLength(all.left(bodyBegin));
    if (all.size() < bodyBegin + length)
        return false;

    answer.header = all.left(headerSize);
    answer.status = all.split(' ').value(1).toInt();
    answer.body = all.mid(bodyBegin, length);
    m_received.remove(0, bodyBegin + length);
    return true;
}

} // namespace support
