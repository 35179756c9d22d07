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

QString toText(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
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

void HttpExchange::refuse(int status)
{
    ResponseHeader header;
    header.setStatusLine(status, {}, 1, 1);
    header.setValue(QStringLiteral("Connection"), QStringLiteral("close"));
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
    if (m_header.method() == QLatin1String("CONNECT")) // what follows is no HTTP
        MHD_add_response_header(response.get(), "Connection", "close");
    return MHD_queue_response(connection, static_cast<unsigned>(m_answer->header.status()),
                              response.get()) == MHD_YES;
}
