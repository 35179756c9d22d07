#include "AnswerServer.h"

#include "Fuzz.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <memory>
#include <thread>

namespace {

constexpr int noTimeout = -1;

} // namespace

AnswerServer::AnswerServer()
{
    std::promise<int> port;
    auto chosenPort = port.get_future();
    std::thread([this, port = std::move(port)]() mutable { serve(std::move(port)); }).detach();
    m_url = QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(chosenPort.get()));
}

void AnswerServer::setAnswer(const QByteArray &bytes)
{
    const std::lock_guard guard(m_mutex);
    m_answer = bytes;
}

void AnswerServer::serve(std::promise<int> port)
{
    QTcpServer server;
    fuzz::require(server.listen(QHostAddress::LocalHost), "there is a free port");
    port.set_value(server.serverPort());
    while (true) {
        server.waitForNewConnection(noTimeout);
        const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
        QByteArray request; // without a body, so that nothing is unread when the socket is closed
        while (!request.contains("\r\n\r\n") && socket->waitForReadyRead())
            request += socket->readAll();
        {
            const std::lock_guard guard(m_mutex);
            socket->write(m_answer);
        }
        socket->disconnectFromHost();
        if (socket->state() != QAbstractSocket::UnconnectedState)
            socket->waitForDisconnected();
    }
}
