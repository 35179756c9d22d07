#include "HttpAdmission.h"

HttpAdmission::HttpAdmission(const HttpServerOptions &options)
    : m_maxHeaderBytes(options.maxHeaderBytes), m_maxBodyBytes(options.maxBodyBytes)
{
    if (options.guard)
        m_guard.emplace(options.address);
}

std::optional<HttpAdmission::Refusal> HttpAdmission::refusal(const HttpRequestHead &head,
                                                             const RequestHeader &header) const
{
    using Kind = HttpRefusals::Kind;
    if (const auto fault = head.fault(); !fault.isNull())
        return Refusal{400, Kind::Syntax, fault};
    if (static_cast<qint64>(head.size()) > m_maxHeaderBytes)
        return tooLargeHead(head);
    if (m_guard && !m_guard->admits(header))
        return Refusal{403, Kind::Guard, QStringLiteral("чужой Host или Origin")};
    // The library lets pass whatever fits 64 bits.
    if (header.value(QStringLiteral("Content-Length")).toULongLong() >
        static_cast<quint64>(m_maxBodyBytes))
        return tooLargeBody();
    return std::nullopt;
}

HttpAdmission::Refusal HttpAdmission::tooLargeBody() const
{
    return {413, HttpRefusals::Kind::Size,
            QStringLiteral("тело больше %1 байт").arg(m_maxBodyBytes)};
}

HttpAdmission::Refusal HttpAdmission::tooLargeHead(const HttpRequestHead &head) const
{
    const int status = head.target().size() > m_maxHeaderBytes ? 414 : 431;
    return {status, HttpRefusals::Kind::Size,
            QStringLiteral("заголовок больше %1 байт").arg(m_maxHeaderBytes)};
}
