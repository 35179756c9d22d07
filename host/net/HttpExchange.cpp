#include "HttpExchange.h"

#include "HttpStreamSource.h"

#include <microhttpd.h>

#include <memory>
#include <utility>

namespace {

struct DestroyResponse
{
    void operator()(MHD_Response *response) const { MHD_destroy_response(response); }
};
using ResponseHandle = std::unique_ptr<MHD_Response, DestroyResponse>;

QString toText(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

constexpr std::size_t streamBlockBytes = 65'536;

/// A stream with the connection that it is sent on.
struct StreamReader
{
    std::shared_ptr<HttpStreamSource> source;
    MHD_Connection *connection;
};

ssize_t readStream(void *reader, std::uint64_t, char *to, std::size_t size)
{
    const auto &[source, connection] = *static_cast<StreamReader *>(reader);
    return source->read(connection, to, size);
}

void closeStream(void *reader)
{
    const std::unique_ptr<StreamReader> owned(static_cast<StreamReader *>(reader));
    owned->source->abandon();
}

MHD_Response *createResponse(const QByteArray &body, MHD_Connection *)
{
    return MHD_create_response_from_buffer(static_cast<std::size_t>(body.size()),
                                           const_cast<char *>(body.constData()), // not written
                                           MHD_RESPMEM_MUST_COPY);
}

MHD_Response *createResponse(const std::shared_ptr<HttpStreamSource> &body,
                             MHD_Connection *connection)
{
    auto reader = std::make_unique<StreamReader>(StreamReader{body, connection});
    auto *const response = MHD_create_response_from_callback(
        MHD_SIZE_UNKNOWN, streamBlockBytes, &readStream, reader.get(), &closeStream);
    if (response != nullptr)
        static_cast<void>(reader.release()); // closeStream frees it
    return response;
}

} // namespace

HttpRequestHead HttpExchange::readHead(MHD_Connection *connection, const char *method,
                                       const char *version) const
{
    return HttpRequestHead::of(connection, method, m_uriAt, m_uri, version);
}

void HttpExchange::begin(const HttpRequestHead &head)
{
    m_begun = true;
    m_header = RequestHeader(toText(head.method()), QString::fromUtf8(head.target()));
    for (const auto &[name, value] : head.fields())
        m_header.addValue(toText(name), toText(value));
}

void HttpExchange::addBody(const char *data, std::size_t size, qint64 limit)
{
    const auto length = static_cast<qsizetype>(size);
    m_tooLarge = m_tooLarge || length > limit - m_body.size();
    if (m_tooLarge)
        m_body.clear();
    else
        m_body.append(data, length);
}

void HttpExchange::setAnswer(const ResponseHeader &header, const QByteArray &body)
{
    m_answer = Answer{header, body};
}

void HttpExchange::setAnswer(const ResponseHeader &header, std::shared_ptr<HttpStreamSource> body)
{
    m_answer = Answer{header, std::move(body)};
}

void HttpExchange::refuse(int status)
{
    ResponseHeader header;
    header.setStatusLine(status, {}, 1, 1);
    header.setValue(QStringLiteral("Connection"), QStringLiteral("close"));
    setAnswer(header, QByteArray());
}

bool HttpExchange::isStream() const
{
    return m_answer && std::holds_alternative<std::shared_ptr<HttpStreamSource>>(m_answer->body);
}

bool HttpExchange::sendAnswer(MHD_Connection *connection) const
{
    if (m_dropped)
        return false;
    const ResponseHandle response(
        std::visit([connection](const auto &body) { return createResponse(body, connection); },
                   m_answer->body));
    if (!response)
        return false;
    const auto fields = m_answer->header.fields();
    for (const auto &[name, value] : fields)
        MHD_add_response_header(response.get(), name.toUtf8().constData(),
                                value.toUtf8().constData());
    if (m_header.method() == QLatin1String("CONNECT")) // what follows is no HTTP
        MHD_add_response_header(response.get(), "Connection", "close");
    return MHD_queue_response(connection, static_cast<unsigned>(m_answer->header.status()),
                              response.get()) == MHD_YES;
}
