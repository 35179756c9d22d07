#include "HttpConnections.h"

#include <microhttpd.h>

#include <sys/socket.h>

#include <algorithm>
#include <iterator>
#include <string>

namespace {

/// A whole answer that says no more than its status.
std::string bareAnswer(const char *status)
{
    return std::string("HTTP/1.1 ") + status + "\r\nConnection: close\r\nContent-Length: 0\r\n\r\n";
}

bool isIncomplete(HttpConnections::Phase phase)
{
    return phase == HttpConnections::Phase::Header || phase == HttpConnections::Phase::Body;
}

} // namespace

HttpConnections::HttpConnections(const HttpServerOptions &options, HttpRefusals &refusals)
    : m_options(options), m_refusals(refusals)
{
}

void HttpConnections::add(MHD_Connection *connection)
{
    const auto *info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD);
    m_entries.insert_or_assign(connection, Entry{info->connect_fd, Phase::Header, {}, {}});
    enter(connection, Phase::Header);
    const auto open = std::count_if(m_entries.cbegin(), m_entries.cend(), [](const auto &each) {
        return each.second.phase != Phase::Cut;
    });
    if (open > m_options.maxConnections)
        makeRoomFor(connection);
}

void HttpConnections::remove(MHD_Connection *connection)
{
    m_entries.erase(connection);
}

void HttpConnections::enter(MHD_Connection *connection, Phase phase)
{
    auto &entry = m_entries.at(connection);
    if (entry.phase == Phase::Cut)
        return;
    const auto now = Clock::now();
    if (!isIncomplete(entry.phase) || phase == Phase::Header)
        entry.since = now; // the body belongs to a request that has been incomplete for longer
    entry.phase = phase;
    entry.deadline = now + allowed(phase);
    expect(entry);
}

void HttpConnections::awaitNext(MHD_Connection *connection)
{
    enter(connection, Phase::Header);
    m_entries.at(connection).deadline += m_options.idleTimeout;
}

void HttpConnections::cutOverdue()
{
    const auto now = Clock::now();
    if (now < m_nextDeadline)
        return;
    m_nextDeadline = Clock::time_point::max();
    for (auto &[connection, entry] : m_entries) {
        if (hasDeadline(entry.phase) && entry.deadline <= now) {
            m_refusals.note(HttpRefusals::Kind::Deadline,
                            QStringLiteral("соединение закрыто: срок истёк"));
            cut(entry, isIncomplete(entry.phase) ? "408 Request Timeout" : nullptr);
        }
        expect(entry);
    }
}

void HttpConnections::cut(MHD_Connection *connection, const char *status)
{
    cut(m_entries.at(connection), status);
}

bool HttpConnections::isCut(MHD_Connection *connection) const
{
    return m_entries.at(connection).phase == Phase::Cut;
}

void HttpConnections::makeRoomFor(MHD_Connection *connection)
{
    auto oldest = m_entries.end();
    for (auto each = m_entries.begin(); each != m_entries.end(); ++each) {
        if (each->first == connection || !isIncomplete(each->second.phase))
            continue;
        if (oldest == m_entries.end() || each->second.since < oldest->second.since)
            oldest = each;
    }
    m_refusals.note(
        HttpRefusals::Kind::Room,
        QStringLiteral("соединение закрыто: их больше %1").arg(m_options.maxConnections));
    if (oldest == m_entries.end())
        cut(connection, "503 Service Unavailable");
    else
        cut(oldest->second, nullptr);
}

/// The library finds the socket at its end and closes it.
void HttpConnections::cut(Entry &entry, const char *status)
{
    if (status != nullptr) {
        const auto answer = bareAnswer(status);
        ::send(entry.socket, answer.data(), answer.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    }
    ::shutdown(entry.socket, SHUT_RDWR);
    entry.phase = Phase::Cut;
}

void HttpConnections::expect(const Entry &entry)
{
    if (hasDeadline(entry.phase))
        m_nextDeadline = std::min(m_nextDeadline, entry.deadline);
}

bool HttpConnections::hasDeadline(Phase phase)
{
    return isIncomplete(phase) || phase == Phase::Answer;
}

HttpConnections::Clock::duration HttpConnections::allowed(Phase phase) const
{
    switch (phase) {
    case Phase::Header:
        return m_options.headerTimeout;
    case Phase::Body:
        return m_options.bodyTimeout;
    case Phase::Answer:
        return m_options.answerTimeout;
    default:
        return {}; // no deadline
    }
}
