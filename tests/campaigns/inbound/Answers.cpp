#include "Answers.h"

#include <support/HttpHead.h>

namespace inbound {

namespace {

/// Zero if it is none.
int statusOf(const QByteArray &head)
{
    if (!head.startsWith("HTTP/1.") || head.size() < 13 || head.at(8) != ' ' || head.at(12) != ' ')
        return 0;
    bool isNumber = false;
    const int status = head.mid(9, 3).toInt(&isNumber);
    return isNumber && status >= 100 && status < 600 ? status : 0;
}

} // namespace

std::optional<int> Answers::next()
{
    auto status = takeAny();
    while (status && *status < 200)
        status = takeAny();
    return status;
}

std::optional<int> Answers::takeAny()
{
    const auto end = m_arrived.indexOf("\r\n\r\n");
    if (m_isGarbled || m_isLast || end < 0)
        return std::nullopt;
    const auto head = m_arrived.left(end + 2);
    const int status = statusOf(head);
    m_isGarbled = status == 0;
    m_isLast = status >= 400 && head.contains("\r\nConnection: close\r\n");
    const auto size = m_isLast ? m_arrived.size() : end + 4 + support::contentLength(head);
    if (m_isGarbled || m_arrived.size() < size)
        return std::nullopt;
    m_arrived.remove(0, size);
    return status;
}

bool Answers::isWhole() const
{
    return !m_isGarbled && (m_isLast || m_arrived.isEmpty());
}

} // namespace inbound
