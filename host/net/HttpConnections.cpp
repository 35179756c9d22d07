#include "HttpConnections.h"

#include <microhttpd.h>

#include <sys/socket.h>

#include <algorithm>
#include <string>
#include <utility>

namespace {

using namespace std::chrono_literals;

/// A client that takes its answer does so within this time.
constexpr auto promptly = 200ms;

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

bool HttpConnections::makeRoom()
{
    const auto limit = static_cast<std::size_t>(m_options.maxConnections);
    if (m_entries.size() >= limit + reserve)
        return false;
    const auto open = std::count_if(m_entries.cbegin(), m_entries.cend(), [](const auto &each) {
        return each.second.phase != Phase::Cut;
    });
    if (open < m_options.maxConnections)
        return true;
    auto *place = longestIdle();
    if (place == nullptr && longest(&isBusy) == nullptr)
        place = longest([](const Entry &entry) { return entry.phase == Phase::Stream; });
    m_isAwaited = place == nullptr;
    if (!m_isAwaited)
        giveUp(*place);
    return !m_isAwaited;
}

void HttpConnections::add(MHD_Connection *connection)
{
    const auto *info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD);
    m_entries.insert_or_assign(connection, Entry{info->connect_fd, Phase::Header, {}, {}});
    enter(connection, Phase::Header);
    m_isAwaited = false;
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
    if (phase != Phase::Body) // which belongs to a request that has been incomplete for longer
        entry.since = now;
    entry.phase = phase;
    entry.deadline = now + allowed(phase);
    expect(entry);
}

void HttpConnections::awaitNext(MHD_Connection *connection)
{
    enter(connection, Phase::Header);
    auto &entry = m_entries.at(connection);
    entry.deadline += m_options.idleTimeout;
    if (entry.phase != Phase::Cut && std::exchange(m_isAwaited, false))
        giveUp(entry);
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

/// Answers that are taken at once are on their way for a moment, too.
HttpConnections::Entry *HttpConnections::longestIdle()
{
    const auto late = Clock::now() - promptly;
    return longest([late](const Entry &entry) {
        return isIncomplete(entry.phase) || (entry.phase == Phase::Answer && entry.since < late);
    });
}

HttpConnections::Entry *HttpConnections::longest(const std::function<bool(const Entry &)> &counts)
{
    Entry *longest = nullptr;
    for (auto &[connection, entry] : m_entries) {
        if (counts(entry) && (longest == nullptr || entry.since < longest->since))
            longest = &entry;
    }
    return longest;
}

void HttpConnections::giveUp(Entry &entry)
{
    m_refusals.note(
        HttpRefusals::Kind::Room,
        QStringLiteral("соединение закрыто: их больше %1").arg(m_options.maxConnections));
    cut(entry, nullptr);
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

/// Whether it is about to be answered.
bool HttpConnections::isBusy(const Entry &entry)
{
    return entry.phase == Phase::Waiting || entry.phase == Phase::Answer;
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
