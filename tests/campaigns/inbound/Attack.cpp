#include "Attack.h"

#include <poll.h>

#include <algorithm>
#include <set>
#include <utility>

namespace inbound {

namespace {

using namespace std::chrono_literals;

constexpr int largestBatch = 8;
/// The end of a client that comes together with its last bytes goes unseen by libmicrohttpd until
/// the time-out: it then waits for more.
constexpr auto pauseBeforeEnd = 20ms;
constexpr int longestShown = 4000;

/// What a request that is refused may be told.
bool isRefusal(int status)
{
    static const std::set<int> all{400, 408, 413, 414, 431, 501, 505};
    return all.contains(status);
}

std::string shown(const QByteArray &bytes)
{
    std::string text;
    for (const char c : bytes.left(longestShown)) {
        if (c >= ' ' && c <= '~' && c != '\\')
            text += c;
        else
            text += "\\x" + QByteArray(1, c).toHex().toStdString();
    }
    return text + (bytes.size() > longestShown ? "…" : "");
}

} // namespace

void Attack::run()
{
    m_next = m_plan.first;
    for (int i = 0; i < m_plan.connections && hasMore(); ++i) {
        m_connections.emplace_back();
        open(m_connections.back());
    }
    std::vector<pollfd> watched;
    while (m_fault.empty() && !m_connections.empty()) {
        watched.clear();
        for (const auto &each : m_connections) {
            const bool sends = !each.unsent.isEmpty();
            watched.push_back(
                {each.peer.socket(), static_cast<short>(sends ? POLLIN | POLLOUT : POLLIN), 0});
        }
        ::poll(watched.data(), watched.size(), 10);
        for (std::size_t i = 0; i < watched.size() && m_fault.empty(); ++i)
            goOn(m_connections[i], watched[i].revents);
        std::erase_if(m_connections, [](const auto &each) { return each.awaited.isEmpty(); });
    }
    m_connections.clear();
}

void Attack::open(Connection &connection)
{
    connection = Connection();
    connection.peer.connect(m_plan.port);
    load(connection);
}

void Attack::goOn(Connection &connection, int events)
{
    if (events != 0)
        connection.lastEvent = Clock::now();
    if ((events & POLLOUT) != 0)
        send(connection);
    const bool isOver = (events & ~POLLOUT) != 0 && !receive(connection);
    if (isOver) {
        judgeEnd(connection);
        if (hasMore())
            open(connection);
    } else if (connection.awaited.isEmpty()) {
        load(connection);
    } else if (Clock::now() > connection.deadline) {
        fail(connection.awaited.first(), "its connection stays open");
    } else {
        finish(connection);
    }
}

/// The next request, and those that may go out behind it.
void Attack::load(Connection &connection)
{
    connection.isFinished = false;
    connection.isAnswered = false;
    connection.deadline = Clock::now() + m_plan.deadline;
    Random random(~m_mutants.seed(), m_next);
    const int batch = random.between(1, largestBatch);
    while (hasMore() && connection.awaited.size() < batch && !isAtLastOne(connection)) {
        const int number = m_next++;
        const auto mutant =
            m_plan.clientsWait ? m_mutants.malformedAt(number) : m_mutants.at(number);
        connection.unsent += mutant.bytes;
        connection.awaited.append({number, mutant});
    }
    // So many pieces that a slow machine has sent all of them long before any time-out.
    const int smallest = 1 + static_cast<int>(connection.unsent.size()) / 20;
    connection.piece = random.oneIn(4) ? random.between(smallest, 10 * smallest) : 0;
}

bool Attack::isAtLastOne(const Connection &connection)
{
    return !connection.awaited.isEmpty() &&
           connection.awaited.last().mutant.due != Mutant::Due::Acknowledgement;
}

/// The server may wait for more of the last one unless its client leaves.
void Attack::finish(Connection &connection) const
{
    if (m_plan.clientsWait || connection.isFinished || !connection.unsent.isEmpty() ||
        connection.awaited.size() > 1 || Clock::now() < connection.lastEvent + pauseBeforeEnd ||
        connection.awaited.first().mutant.due != Mutant::Due::AnswerOrEnd)
        return;
    connection.peer.finish();
    connection.isFinished = true;
}

void Attack::send(Connection &connection) const
{
    auto &unsent = connection.unsent;
    const auto size =
        connection.peer.sendSome(connection.piece > 0 ? unsent.left(connection.piece) : unsent);
    if (size < 0)
        unsent.clear(); // the end will be received
    else
        unsent.remove(0, size);
}

/// False if the connection is over.
bool Attack::receive(Connection &connection)
{
    const bool isOpen = connection.peer.receive(connection.answers.arrived());
    while (const auto status = connection.answers.next())
        judge(connection, *status);
    return isOpen;
}

void Attack::judge(Connection &connection, int status)
{
    ++m_statuses[status];
    if (connection.awaited.isEmpty() || !m_fault.empty())
        return;
    const auto &sent = connection.awaited.first();
    connection.isAnswered = true;
    if (sent.mutant.due == Mutant::Due::AnswerOrEnd) {
        if (status != 200 && !isRefusal(status))
            fail(sent, "is answered " + std::to_string(status));
        return;
    }
    if (status != 200) {
        fail(sent, "is well-formed, but answered " + std::to_string(status));
    } else if (sent.mutant.due == Mutant::Due::Acknowledgement) {
        connection.awaited.removeFirst();
        connection.isAnswered = false;
        ++m_judged;
    }
}

void Attack::judgeEnd(Connection &connection)
{
    if (connection.awaited.isEmpty() || !m_fault.empty())
        return;
    const auto &sent = connection.awaited.first();
    const bool mayEndSilently = sent.mutant.due == Mutant::Due::AnswerOrEnd;
    if (!connection.answers.isWhole())
        fail(sent, "is answered by what is no answer: " + shown(connection.answers.arrived()));
    else if (!connection.isAnswered && !mayEndSilently)
        fail(sent, "is well-formed, but its connection ends without an answer");
    if (!connection.isAnswered)
        ++m_statuses[0];
    ++m_judged;
    connection.awaited.clear();
}

void Attack::fail(const Sent &sent, const std::string &what)
{
    m_fault = "request " + std::to_string(sent.number) +
              " of CAMPAIGN_SEED=" + std::to_string(m_mutants.seed()) + ' ' + what + "\n" +
              shown(sent.mutant.bytes);
}

} // namespace inbound
