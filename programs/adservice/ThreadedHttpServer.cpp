#include <adservice/ThreadedHttpServer.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <arpa/inet.h>
#include <microhttpd.h>
#include <netinet/in.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <utility>

namespace {

constexpr unsigned maxConnections = 64;  // further ones wait
constexpr unsigned requestTimeoutS = 30; // of silence while a request arrives
constexpr unsigned noTimeout = 0;
constexpr std::size_t streamBlockBytes = 65'536;

/// A request while it arrives.
struct Arrival
{
    ThreadedHttpServer::Request request;
    bool begun = false;
    bool tooLarge = false;
};

/// The body of an answer that comes piece by piece.
struct Pieces
{
    std::function<QByteArray()> more;
    QByteArray piece;
    qsizetype taken = 0;
};

ssize_t readPieces(void *body, std::uint64_t, char *to, std::size_t size)
{
    auto &[more, piece, taken] = *static_cast<Pieces *>(body);
    if (taken == piece.size()) {
        piece = more();
        taken = 0;
        if (piece.isEmpty())
            return MHD_CONTENT_READER_END_OF_STREAM;
    }
    const auto count = std::min(static_cast<qsizetype>(size), piece.size() - taken);
    std::copy_n(piece.cbegin() + taken, count, to);
    taken += count;
    return count;
}

void dropPieces(void *body)
{
    delete static_cast<Pieces *>(body);
}

MHD_Response *createResponse(const Answer &answer)
{
    if (answer.more)
        return MHD_create_response_from_callback(MHD_SIZE_UNKNOWN, streamBlockBytes, &readPieces,
                                                 new Pieces{answer.more, answer.body}, // dropPieces
                                                 &dropPieces);
    return MHD_create_response_from_buffer(
        static_cast<std::size_t>(answer.body.size()),
        const_cast<char *>(answer.body.constData()), // copied, not written
        MHD_RESPMEM_MUST_COPY);
}

MHD_Result send(MHD_Connection *connection, const Answer &answer)
{
    MHD_Response *response = createResponse(answer);
    if (response == nullptr)
        return MHD_NO;
    for (const auto &[name, value] : answer.fields)
        MHD_add_response_header(response, name.constData(), value.constData());
    MHD_add_response_header(response, MHD_HTTP_HEADER_CONNECTION, "close");
    const auto result =
        MHD_queue_response(connection, static_cast<unsigned>(answer.status), response);
    MHD_destroy_response(response);
    return result;
}

void addBody(Arrival &arrival, const char *data, std::size_t size)
{
    const auto length = static_cast<qsizetype>(size);
    auto &body = arrival.request.body;
    arrival.tooLarge = arrival.tooLarge || length > ThreadedHttpServer::maxBodyBytes - body.size();
    if (!arrival.tooLarge)
        body.append(data, length);
}

} // namespace

struct ThreadedHttpServer::Callbacks
{
    static void *onUri(void *, const char *uri, MHD_Connection *)
    {
        const QList<QByteArray> parts = QByteArray(uri).split('?');
        auto *arrival = new Arrival; // onCompleted
        arrival->request.path = QString::fromUtf8(QByteArray::fromPercentEncoding(parts.first()));
        arrival->request.query = QUrlQuery(QString::fromUtf8(parts.mid(1).join('?')));
        return arrival;
    }

    static MHD_Result onRequest(void *self, MHD_Connection *connection, const char *,
                                const char *method, const char *, const char *upload,
                                std::size_t *uploadSize, void **context)
    {
        auto &arrival = *static_cast<Arrival *>(*context);
        if (!std::exchange(arrival.begun, true)) {
            arrival.request.method = method;
            return MHD_YES;
        }
        if (*uploadSize > 0) {
            addBody(arrival, upload, std::exchange(*uploadSize, 0));
            return MHD_YES;
        }
        if (arrival.tooLarge)
            return send(connection, textAnswer(413, "the body is too large"));
        // From here on silence is the handler's, not the client's.
        MHD_set_connection_option(connection, MHD_CONNECTION_OPTION_TIMEOUT, noTimeout);
        const auto answer = static_cast<ThreadedHttpServer *>(self)->answer(arrival.request);
        return answer ? send(connection, *answer) : MHD_NO;
    }

    static void onCompleted(void *, MHD_Connection *, void **context, MHD_RequestTerminationCode)
    {
        delete static_cast<Arrival *>(*context);
        *context = nullptr;
    }
};

void ThreadedHttpServer::StopDaemon::operator()(MHD_Daemon *daemon) const
{
    MHD_stop_daemon(daemon);
}

ThreadedHttpServer::ThreadedHttpServer(int port, Handler handler) : m_handler(std::move(handler))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    // An option a line.
    // clang-format off
    m_daemon.reset(MHD_start_daemon(
        MHD_USE_INTERNAL_POLLING_THREAD | MHD_USE_THREAD_PER_CONNECTION, 0, nullptr, nullptr,
        &Callbacks::onRequest, this,
        MHD_OPTION_SOCK_ADDR, &address,
        MHD_OPTION_URI_LOG_CALLBACK, &Callbacks::onUri, this,
        MHD_OPTION_NOTIFY_COMPLETED, &Callbacks::onCompleted, this,
        MHD_OPTION_CONNECTION_LIMIT, maxConnections,
        MHD_OPTION_CONNECTION_TIMEOUT, requestTimeoutS,
        MHD_OPTION_END));
    // clang-format on
    if (!m_daemon)
        m_error = qt_error_string(errno);
}

ThreadedHttpServer::~ThreadedHttpServer() = default;

int ThreadedHttpServer::port() const
{
    const auto *info =
        m_daemon ? MHD_get_daemon_info(m_daemon.get(), MHD_DAEMON_INFO_BIND_PORT) : nullptr;
    return info == nullptr ? 0 : info->port;
}

/// An exception must not reach the library, which is written in C.
std::optional<Answer> ThreadedHttpServer::answer(const Request &request) const
{
    try {
        return m_handler(request);
    } catch (const std::exception &error) {
        Log4Qt::LogManager::logger(QStringLiteral("adservice"))
            ->error(
                QStringLiteral("%1 failed: %2").arg(request.path, QString::fromUtf8(error.what())));
        return textAnswer(500, "the service failed");
    }
}
