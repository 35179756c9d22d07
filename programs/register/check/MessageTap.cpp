#include <register/check/MessageTap.h>

namespace {

HttpServerOptions optionsForPictures()
{
    HttpServerOptions options;
    options.maxBodyBytes = 67'108'864;
    return options;
}

} // namespace

MessageTap::MessageTap() : m_server(0, optionsForPictures())
{
    connect(&m_server, &HttpServer::requestReceived, this,
            [this](const RequestHeader &header, const QByteArray &content) {
                m_server.sendResponse({}, {});
                Post post;
                post.path = header.path();
                post.body = content;
                Q_EMIT received(post);
            });
}
