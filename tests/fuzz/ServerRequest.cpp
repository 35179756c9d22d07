// What a client sends to the plug-in's port, or to that of a page: heads, bodies and chunks.

#include "support/Fuzz.h"

#include <HttpServer.h>

#include <QCoreApplication>

#include <array>
#include <cstdio>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr qint64 maxBodyBytes = 1000;

bool isOwnName(const QString &host)
{
    return host.startsWith(QLatin1String("localhost"), Qt::CaseInsensitive) ||
           host.startsWith(QLatin1String("127.")) || host.startsWith(QLatin1String("[::1]"));
}

HttpServer *startServer(bool guard)
{
    HttpServerOptions options;
    options.maxBodyBytes = maxBodyBytes;
    options.maxHeaderBytes = 2000;
    options.guard = guard;
    auto *const server = new HttpServer(0, options);
    fuzz::require(server->isListening(), "there is a free port");
    QObject::connect(server, &HttpServer::requestReceived, server,
                     [server, guard](const RequestHeader &header, const QByteArray &body) {
                         fuzz::require(!header.method().isEmpty() && !header.path().isEmpty() &&
                                           body.size() <= maxBodyBytes,
                                       "what is delivered is a request within the limits");
                         fuzz::require(!guard || isOwnName(header.value(QStringLiteral("Host"))),
                                       "a guarded server is asked for by its own names only");
                         server->sendResponse({}, header.value(QStringLiteral("Host")).toUtf8());
                     });
    return server;
}

int connectTo(int port)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    fuzz::require(::connect(socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0,
                  "the server takes connections");
    return socket;
}

void sendOn(int socket, const QByteArray &bytes)
{
    send(socket, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
}

/// What comes until the server closes the connection. A server that does not is a hang.
QByteArray answerOn(int socket)
{
    QByteArray answer;
    std::array<char, 4096> chunk{};
    while (true) {
        QCoreApplication::processEvents();
        pollfd event{socket, POLLIN, 0};
        if (poll(&event, 1, 1) <= 0) // nothing yet, or the clock of the fuzzer
            continue;
        const auto size = recv(socket, chunk.data(), chunk.size(), 0);
        if (size <= 0)
            return answer;
        answer.append(chunk.data(), static_cast<qsizetype>(size));
    }
}

} // namespace

/// The input may be the beginning of a request, whose rest the server waits for; it has been read
/// when another client, who came later, has been served.
void fuzzOne(const QByteArray &input)
{
    static const std::array servers{startServer(false), startServer(true)};
    for (const auto *server : servers) {
        const int socket = connectTo(server->port());
        sendOn(socket, input);
        const int other = connectTo(server->port());
        sendOn(other, "GET / HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n");
        const auto answer = answerOn(other);
        if (!answer.startsWith("HTTP/1.1 200 "))
            std::fprintf(stderr, "answered with \"%s\"\n", answer.constData());
        fuzz::require(answer.startsWith("HTTP/1.1 200 "), "other clients are served");
        close(other);
        close(socket);
    }
}
