#include <support/RecordingDisplay.h>

#include <QJsonDocument>

#include <stdexcept>

namespace support {

RecordingDisplay::RecordingDisplay()
{
    m_context.moveToThread(&m_thread);
    m_thread.start();
    listen(0);
}

RecordingDisplay::~RecordingDisplay()
{
    goDown();
    m_thread.quit();
    m_thread.wait();
}

void RecordingDisplay::goDown()
{
    onOwnThread([this] { m_server.reset(); });
}

void RecordingDisplay::comeBack()
{
    listen(m_port);
}

void RecordingDisplay::listen(int port)
{
    onOwnThread([this, port] {
        m_server = std::make_unique<HttpServer>(port, HttpServerOptions());
        QObject::connect(m_server.get(), &HttpServer::requestReceived, &m_context,
                         [this](const RequestHeader &header, const QByteArray &content) {
                             receive(header, content);
                         });
        m_port = m_server->port();
    });
    if (m_port == 0)
        throw std::runtime_error("the display cannot listen");
}

void RecordingDisplay::receive(const RequestHeader &header, const QByteArray &content)
{
    ResponseHeader answer;
    {
        const auto access = m_state.lock();
        access->requests.append({header, content, header.path(),
                                 QJsonDocument::fromJson(content).object(), Clock::now()});
        answer.setStatusLine(access->status, QString(), 1, 1);
    }
    m_server->sendResponse(answer, QByteArray());
}

QStringList RecordingDisplay::paths() const
{
    QStringList paths;
    for (const auto &request : requests())
        paths.append(request.path);
    return paths;
}

} // namespace support
