#include <HttpServer.h>

#include "HttpDaemon.h"

#include <HeldRequest.h>

HttpServer::HttpServer(int port) : HttpServer(port, HttpServerOptions::fromConfig()) {}

HttpServer::HttpServer(int port, const HttpServerOptions &options)
    : m_daemon(
          (qRegisterMetaType<RequestHeader>(), std::make_unique<HttpDaemon>(this, port, options)))
{
}

HttpServer::~HttpServer() = default;

bool HttpServer::isListening() const
{
    return m_daemon->isListening();
}

int HttpServer::port() const
{
    return m_daemon->port();
}

QString HttpServer::errorString() const
{
    return m_daemon->error();
}

void HttpServer::sendResponse(const ResponseHeader &header, const QByteArray &body)
{
    m_daemon->answerCurrent(header, body);
}

std::shared_ptr<HeldRequest> HttpServer::holdRequest()
{
    return m_daemon->holdCurrent();
}
