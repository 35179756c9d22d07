#include "HttpExchange.h"

#include <microhttpd.h>

#include <memory>
#include <utility>

namespace {

struct DestroyResponse
{
    void operator()(MHD_Response *response) const { MHD_destroy_response(response); }
};
using ResponseHandle = std::unique_ptr<MHD_Response, DestroyResponse>;

MHD_Result addField(void *header, MHD_ValueKind, const char *name, const char *value)
{
    static_cast<RequestHeader *>(header)->addValue(QString::fromUtf8(name),
                                                   QString::fromUtf8(value));
    return MHD_YES;
}

} // namespace

HttpExchange::HttpExchange(QString uri)
    : m_uri(std::move(uri)), m_started(std::chrono::steady_clock::now())
{
}

bool HttpExchange::begin(MHD_Connection *connection, const char *method)
{
    if (m_begun)
        return false;
    m_begun = true;
    m_header = RequestHeader(QString::fromLatin1(method), m_uri);
    MHD_get_connection_values(connection, MHD_HEADER_KIND, &addField, &m_header);
    return true;
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

bool HttpExchange::announcesMoreThan(qint64 limit) const
{
    return m_header.value(QStringLiteral("Content-Length")).toLongLong() > limit;
}

std::chrono::steady_clock::duration HttpExchange::age() const
{
    return std::chrono::steady_clock::now() - m_started;
}

void HttpExchange::setAnswer(const ResponseHeader &header, const QByteArray &body)
{
    m_answer = Answer{header, body};
}

void HttpExchange::setAnswer(int status, const QString &reason)
{
    ResponseHeader header;
    header.setStatusLine(status, reason, 1, 1);
    setAnswer(header, {});
}

bool HttpExchange::sendAnswer(MHD_Connection *connection) const
{
    const ResponseHandle response(MHD_create_response_from_buffer(
        static_cast<std::size_t>(m_answer->body.size()),
        const_cast<char *>(m_answer->body.constData()), // copied, not written
        MHD_RESPMEM_MUST_COPY));
    if (!response)
        return false;
    const auto fields = m_answer->header.fields();
    for (const auto &[name, value] : fields)
        MHD_add_response_header(response.get(), name.toUtf8().constData(),
                                value.toUtf8().constData());
    return MHD_queue_response(connection, static_cast<unsigned>(m_answer->header.status()),
                              response.get()) == MHD_YES;
}
