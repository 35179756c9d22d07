#include "RecordedPosts.h"

#include <QUrl>

#include <cstdlib>
#include <string_view>

int RecordedPosts::post(const QUrl &url, const QByteArray &body, const Headers &headers)
{
    bool holds = false;
    {
        const auto access = m_state.lock();
        ++access->begun;
        holds = access->holds;
    }
    if (holds)
        m_gate.acquire();
    const int result = RestClient::post(url, body, headers);
    m_state.lock()->ended.append({url.path(), numberOf(body), result});
    return result;
}

bool RecordedPosts::isPosting() const
{
    const auto access = m_state.lock();
    return access->begun > access->ended.size();
}

QList<int> RecordedPosts::delivered() const
{
    QList<int> numbers;
    for (const auto &post : ended()) {
        if (post.result == 0)
            numbers.append(post.number);
    }
    return numbers;
}

void RecordedPosts::forget()
{
    const auto access = m_state.lock();
    access->begun = 0;
    access->ended.clear();
}

int numberOf(const QByteArray &body)
{
    constexpr std::string_view begin = "{\"n\":";
    if (!body.startsWith(QByteArrayView(begin.data(), begin.size())))
        return 0;
    return static_cast<int>(std::strtol(body.constData() + begin.size(), nullptr, 10));
}
