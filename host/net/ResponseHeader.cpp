#include <ResponseHeader.h>

ResponseHeader::ResponseHeader() = default;

void ResponseHeader::setStatusLine(int status, const QString &reason, int majorVersion,
                                   int minorVersion)
{
    m_status = status;
    m_reason = reason;
    m_majorVersion = majorVersion;
    m_minorVersion = minorVersion;
}
