#include <relay/Relay.h>

#include <common/MonotonicClock.h>
#include <relay/Forwarding.h>
#include <relay/HeaderFields.h>

namespace {

constexpr qint64 maxBodyBytes = 33'554'432; // 32 MiB, as the display takes
constexpr int maxConnections = 16; // either side uses one; each may hold a request and its answer

HttpServerOptions serverOptions()
{
    HttpServerOptions options;
    options.maxBodyBytes = maxBodyBytes;
    options.maxConnections = maxConnections;
    return options;
}

/// A foreign "Origin" is for the target to judge, which gets to see it.
RequestHeader withHostOnly(const RequestHeader &header)
{
    const auto host = QStringLiteral("Host");
    RequestHeader bare(header.method(), header.path());
    bare.setValue(host, header.value(host));
    return bare;
}

} // namespace

Relay::Relay(int port, const QUrl &target, std::chrono::milliseconds patience)
    : m_target(serverOf(target))
    , m_patience(patience)
    , m_server(port, serverOptions())
    , m_guard(serverOptions().address)
{
    connect(&m_server, &HttpServer::requestReceived, this, &Relay::receive);
}

Relay::~Relay()
{
    qDeleteAll(findChildren<Forwarding *>()); // while their clients can still be told
}

void Relay::receive(const RequestHeader &header, const QByteArray &content)
{
    if (!m_guard.admits(withHostOnly(header))) {
        constexpr int forbidden = 403;
        ResponseHeader answer;
        answer.setStatusLine(forbidden, {}, 1, 1);
        m_server.sendResponse(answer, {});
        return;
    }
    Exchange exchange;
    exchange.number = ++m_received;
    exchange.startedAt = QDateTime::currentDateTimeUtc();
    exchange.startedMs = monotonicMs();
    exchange.method = header.method().toUtf8();
    exchange.path = header.path();
    exchange.requestBody = content;
    exchange.requestContentType = header.contentType().toUtf8();
    const HttpRequest request{m_target, exchange.method, header.path().toUtf8(),
                              endToEndFields(header), content};
    auto *const forwarding =
        new Forwarding(m_server.holdRequest(), exchange, request, m_patience, this);
    connect(forwarding, &Forwarding::ended, this, &Relay::exchanged);
    connect(forwarding, &Forwarding::ended, forwarding, &QObject::deleteLater);
}
