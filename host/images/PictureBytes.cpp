#include <PictureBytes.h>

#include <algorithm>
#include <utility>

PictureBytes::PictureBytes(const QByteArray &content, std::stop_token stop,
                           Clock::time_point deadline)
    : m_content(content), m_stop(std::move(stop)), m_deadline(deadline)
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

bool PictureBytes::seek(qint64 position)
{
    m_at = position;
    return QIODevice::seek(position);
}

qint64 PictureBytes::readData(char *data, qint64 maxSize)
{
    m_isBrokenOff = m_isBrokenOff || m_stop.stop_requested() || Clock::now() >= m_deadline;
    if (m_isBrokenOff)
        return -1;
    const auto size = std::min(maxSize, m_content.size() - m_at);
    std::copy_n(m_content.constData() + m_at, size, data);
    m_at += size;
    return size;
}
