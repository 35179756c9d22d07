#include <HeldRequest.h>

#include "HttpDaemon.h"

#include <HttpStream.h>

#include <utility>

HeldRequest::HeldRequest(HttpServer *server, HttpDaemon &daemon,
                         std::shared_ptr<HttpExchange> exchange, MHD_Connection *connection)
    : m_server(server), m_daemon(daemon), m_exchange(std::move(exchange)), m_connection(connection)
{
}

HeldRequest::~HeldRequest()
{
    if (!isAnswerable())
        return;
    m_exchange->refuse(503);
    resume();
}

void HeldRequest::answer(const ResponseHeader &header, const QByteArray &body)
{
    if (!isAnswerable())
        return;
    m_exchange->setAnswer(header, body);
    resume();
}

std::shared_ptr<HttpStream> HeldRequest::answerWithStream(const ResponseHeader &header)
{
    if (!isAnswerable())
        return nullptr;
    const auto source = m_daemon.createStream();
    m_exchange->setAnswer(header, source);
    resume();
    return std::make_shared<HttpStream>(source);
}

void HeldRequest::drop()
{
    if (!isAnswerable())
        return;
    m_exchange->drop();
    resume();
}

void HeldRequest::resume()
{
    m_answered = true;
    m_daemon.resume(*m_exchange, m_connection);
}
