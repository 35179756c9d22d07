#pragma once

#include <BasicHeader.h>

/// The status line and header fields of an HTTP answer; 200 "OK" unless set. A value type.
class HOST_EXPORT ResponseHeader : public BasicHeader
{
public:
    ResponseHeader();

    /// `reason` and the protocol version are what the caller asks for; the server sends the
    /// version that the request was made in and the standard reason of `status`.
    void setStatusLine(int status, const QString &reason, int majorVersion, int minorVersion);

    int status() const { return m_status; }
    QString reason() const { return m_reason; }
    int majorVersion() const { return m_majorVersion; }
    int minorVersion() const { return m_minorVersion; }

private:
    int m_status = 200;
    QString m_reason = QStringLiteral("OK");
    int m_majorVersion = 1;
    int m_minorVersion = 1;
};
