#pragma once

#include "HttpRequestHead.h"

#include <RequestHeader.h>
#include <ResponseHeader.h>

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <variant>

class HttpStreamSource;
struct MHD_Connection;

/**
 * One request on its way through the HttpServer and the answer it gets.
 *
 * Thread: the network thread fills in the request and later sends the answer; between the two,
 * while the connection is suspended, it belongs to the server's thread.
 */
class HttpExchange
{
public:
    /// `uri` lies in the library's buffer, as it came.
    explicit HttpExchange(const char *uri) : m_uriAt(uri), m_uri(uri) {}

    /// The head of the request that is being read; only before `begin`.
    HttpRequestHead readHead(MHD_Connection *connection, const char *method,
                             const char *version) const;
    /// Notes method, path and header fields.
    void begin(const HttpRequestHead &head);
    bool hasBegun() const { return m_begun; }

    /// Adds to the body; what goes beyond `limit` is dropped and marks the body as too large.
    void addBody(const char *data, std::size_t size, qint64 limit);
    bool isTooLarge() const { return m_tooLarge; }

    const RequestHeader &header() const { return m_header; }
    const QByteArray &body() const { return m_body; }

    void setAnswer(const ResponseHeader &header, const QByteArray &body);
    void setAnswer(const ResponseHeader &header, std::shared_ptr<HttpStreamSource> body);
    /// An answer without a body, after which the connection is closed: what may follow the request
    /// is not taken for another one.
    void refuse(int status);
    /// No answer: the connection is to be closed.
    void drop() { m_dropped = true; }
    bool isDecided() const { return m_answer.has_value() || m_dropped; }
    /// Whether the answer has no end of its own.
    bool isStream() const;
    /// Hands the answer to the network library; false if that fails, or there is none to be.
    bool sendAnswer(MHD_Connection *connection) const;

private:
    using Body = std::variant<QByteArray, std::shared_ptr<HttpStreamSource>>;
    struct Answer
    {
        ResponseHeader header;
        Body body;
    };

    const char *m_uriAt;
    QByteArray m_uri;
    bool m_begun = false;
    RequestHeader m_header;
    QByteArray m_body;
    bool m_tooLarge = false;
    std::optional<Answer> m_answer;
    bool m_dropped = false;
};
