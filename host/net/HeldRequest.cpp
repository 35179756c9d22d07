#include <HeldRequest.h>

#include "HttpDaemon.h"

#include <HttpStream.h>

#include <microhttpd.h>

#include <poll.h>

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

bool HeldRequest::isAwaited() const
{
    if (!isAnswerable())
        return false;
    // The library leaves a suspended connection alone: nobody else reads or closes the socket.
    const auto *info = MHD_get_connection_info(m_connection, MHD_CONNECTION_INFO_CONNECTION_FD);
    pollfd socket{info->connect_fd, POLLRDHUP, 0};
    return ::poll(&socket, 1, 0) == 0;
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

bool HeldRequest::isAnswerable() const
{
    return !m_server.isNull() && !m_answered;
}

void HeldRequest::resume()
{
    m_answered = true;
    m_daemon.resume(*m_exchange, m_connection);
}
