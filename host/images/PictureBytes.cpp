#include <PictureBytes.h>

#include <algorithm>
#include <ctime>
#include <utility>

namespace {

std::chrono::nanoseconds processorTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

PictureBytes::PictureBytes(const QByteArray &content, std::stop_token stop,
                           std::chrono::nanoseconds maxTime)
    : m_content(content), m_stop(std::move(stop)), m_deadline(processorTime() + maxTime)
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

bool PictureBytes::seek(qint64 position)
{
    if (position > size() || !QIODevice::seek(position))
        return false;
    m_at = position;
    return true;
}

qint64 PictureBytes::readData(char *data, qint64 maxSize)
{
    m_isBrokenOff = m_isBrokenOff || m_stop.stop_requested() || processorTime() >= m_deadline;
    if (m_isBrokenOff)
        return -1;
    const auto size = std::min(maxSize, m_content.size() - m_at);
    std::copy_n(m_content.constData() + m_at, size, data);
    m_at += size;
    return size;
}
