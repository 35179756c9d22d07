#include "HttpStreamSource.h"

#include <HttpStream.h>

#include <microhttpd.h>

#include <algorithm>
#include <utility>

void HttpStreamSource::write(const QByteArray &piece)
{
    const std::lock_guard guard(m_mutex);
    if (m_ended || piece.isEmpty())
        return;
    if (m_backlog + piece.size() > HttpStream::maxBacklogBytes) {
        m_pieces.clear();
        m_ended = true;
    } else {
        m_pieces.push_back(piece);
        m_backlog += piece.size();
    }
    resume();
}

void HttpStreamSource::end()
{
    const std::lock_guard guard(m_mutex);
    m_ended = true;
    resume();
}

bool HttpStreamSource::isOpen() const
{
    const std::lock_guard guard(m_mutex);
    return !m_ended;
}

ssize_t HttpStreamSource::read(MHD_Connection *connection, char *to, std::size_t size)
{
    const std::lock_guard guard(m_mutex);
    if (m_pieces.empty()) {
        if (m_ended)
            return MHD_CONTENT_READER_END_OF_STREAM;
        m_suspended = connection;
        MHD_suspend_connection(connection);
        return 0;
    }
    const auto &piece = m_pieces.front();
    const auto count = std::min(static_cast<qsizetype>(size), piece.size() - m_taken);
    std::copy_n(piece.cbegin() + m_taken, count, to);
    m_taken += count;
    m_backlog -= count;
    if (m_taken == piece.size()) {
        m_pieces.pop_front();
        m_taken = 0;
    }
    return count;
}

void HttpStreamSource::abandon()
{
    const std::lock_guard guard(m_mutex);
    m_ended = true;
    m_suspended = nullptr;
    m_pieces.clear();
}

void HttpStreamSource::resume()
{
    if (m_suspended == nullptr)
        return;
    MHD_resume_connection(std::exchange(m_suspended, nullptr));
    m_wakeUp.wake();
}
