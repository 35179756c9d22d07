#include <relay/OneTimeBody.h>

#include <algorithm>
#include <utility>

OneTimeBody::OneTimeBody(QByteArray content) : m_content(std::move(content))
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 OneTimeBody::bytesAvailable() const
{
    return m_content.size() - m_read + QIODevice::bytesAvailable();
}

qint64 OneTimeBody::readData(char *to, qint64 maxSize)
{
    const auto size = std::min(maxSize, m_content.size() - m_read);
    std::copy_n(m_content.constData() + m_read, size, to);
    m_read += size;
    return size;
}
