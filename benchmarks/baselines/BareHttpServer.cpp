#include <baselines/BareHttpServer.h>

#include <support/Loopback.h>

#include <microhttpd.h>

#include <stdexcept>
#include <string>

namespace bench {

struct BareHttpServer::Request
{
    std::string body;
    bool isHandled = false;
};

struct BareHttpServer::Callbacks
{
    static MHD_Result onRequest(void *self, MHD_Connection *connection, const char *, const char *,
                                const char *, const char *upload, std::size_t *uploadSize,
                                void **context)
    {
        auto &server = *static_cast<BareHttpServer *>(self);
        if (*context == nullptr) {
            *context = new Request; // deleted by onCompleted
            return MHD_YES;
        }
        auto &request = *static_cast<Request *>(*context);
        if (*uploadSize > 0) {
            request.body.append(upload, *uploadSize);
            *uploadSize = 0;
            return MHD_YES;
        }
        if (request.isHandled)
            return MHD_queue_response(connection, MHD_HTTP_OK, server.m_answer.get());
        MHD_suspend_connection(connection);
        QMetaObject::invokeMethod(
            &server.m_receiver,
            [&server, &request, connection] { server.receive(request, connection); },
            Qt::QueuedConnection);
        return MHD_YES;
    }

    static void onCompleted(void *, MHD_Connection *, void **context, MHD_RequestTerminationCode)
    {
        delete static_cast<Request *>(*context);
        *context = nullptr;
    }
};

void BareHttpServer::Cleanup::operator()(MHD_Daemon *daemon) const
{
    MHD_stop_daemon(daemon);
}

void BareHttpServer::Cleanup::operator()(MHD_Response *response) const
{
    MHD_destroy_response(response);
}

BareHttpServer::BareHttpServer()
    : m_answer(MHD_create_response_from_buffer(0, nullptr, MHD_RESPMEM_PERSISTENT))
{
    const auto address = loopback(0);
    MHD_add_response_header(m_answer.get(), MHD_HTTP_HEADER_CONTENT_TYPE, "application/json");
    m_daemon.reset(MHD_start_daemon(
        MHD_USE_EPOLL | MHD_USE_INTERNAL_POLLING_THREAD | MHD_ALLOW_SUSPEND_RESUME, 0, nullptr,
        nullptr, &Callbacks::onRequest, this, MHD_OPTION_SOCK_ADDR, &address,
        MHD_OPTION_NOTIFY_COMPLETED, &Callbacks::onCompleted, nullptr, MHD_OPTION_END));
    if (!m_daemon)
        throw std::runtime_error("libmicrohttpd does not start");
}

BareHttpServer::~BareHttpServer() = default;

int BareHttpServer::port() const
{
    return MHD_get_daemon_info(m_daemon.get(), MHD_DAEMON_INFO_BIND_PORT)->port;
}

void BareHttpServer::receive(Request &request, MHD_Connection *connection)
{
    m_received += request.body.empty() ? 0 : 1;
    request.isHandled = true;
    MHD_resume_connection(connection);
}

} // namespace bench
