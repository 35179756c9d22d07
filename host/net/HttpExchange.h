#pragma once

#include <RequestHeader.h>
#include <ResponseHeader.h>

#include <QByteArray>
#include <QString>

#include <chrono>
#include <optional>

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
    explicit HttpExchange(QString uri);

    /// Notes method and header fields; true the first time.
    bool begin(MHD_Connection *connection, const char *method);

    /// Adds to the body; what goes beyond `limit` is dropped and marks the body as too large.
    void addBody(const char *data, std::size_t size, qint64 limit);
    bool isTooLarge() const { return m_tooLarge; }
    /// Whether the announced body is larger than `limit`.
    bool announcesMoreThan(qint64 limit) const;

    std::chrono::steady_clock::duration age() const;
    const RequestHeader &header() const { return m_header; }
    const QByteArray &body() const { return m_body; }

    void setAnswer(const ResponseHeader &header, const QByteArray &body);
    /// An answer without a body.
    void setAnswer(int status, const QString &reason);
    bool hasAnswer() const { return m_answer.has_value(); }
    /// Hands the answer to the network library; false if that fails.
    bool sendAnswer(MHD_Connection *connection) const;

private:
    struct Answer
    {
        ResponseHeader header;
        QByteArray body;
    };

    QString m_uri;
    bool m_begun = false;
    RequestHeader m_header;
    QByteArray m_body;
    bool m_tooLarge = false;
    std::chrono::steady_clock::time_point m_started;
    std::optional<Answer> m_answer;
};
