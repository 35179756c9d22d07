#include <display/Advertising.h>

#include <common/EventLine.h>
#include <display/PluginLink.h>

#include <QTimer>

#include <algorithm>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto reportInterval = 1s;
/// From an advertisement to its result at the least: the plug-in must have heard the answer to it
/// by then, with which the next one would go otherwise.
constexpr auto answerTime = 250ms;

QJsonObject resultOf(bool shown)
{
    return {{QStringLiteral("type"), QStringLiteral("result")},
            {QStringLiteral("name"), QStringLiteral("adResult")},
            {QStringLiteral("value"), shown}};
}

} // namespace

Advertising::Advertising(PluginLink &link) : m_link(link)
{
    connect(&m_player, &AdPlayer::finished, this, &Advertising::finish);
    connect(&m_player, &AdPlayer::contentChanged, this, &Advertising::contentChanged);
}

void Advertising::play(const QJsonObject &ad)
{
    ++m_played;
    m_result.reset();
    m_address = ad[u"url"].toString();
    m_sinceArrival.start();
    m_player.play(ad);
}

void Advertising::stop()
{
    m_result.reset();
    m_player.stop();
}

void Advertising::fail(int number, const QString &reason)
{
    if (number == m_played)
        m_player.fail(reason);
}

void Advertising::sendResult(bool shown)
{
    m_link.send(resultOf(shown), [](bool) {});
}

void Advertising::finish(bool shown)
{
    ++(shown ? m_shown : m_failed);
    printEvent(QStringLiteral("adResult"),
               shown ? QStringLiteral("shown: %1").arg(m_address)
                     : QStringLiteral("%1: %2").arg(m_player.reason(), m_address));
    m_result = shown;
    const auto wait = answerTime - std::chrono::milliseconds(m_sinceArrival.elapsed());
    QTimer::singleShot(std::max(wait, 0ms), this, [this, number = m_played] { report(number); });
}

/// Until the plug-in takes it, or nobody waits for it any more.
void Advertising::report(int number)
{
    if (number != m_played || !m_result)
        return;
    m_link.send(resultOf(*m_result), [this, number](bool accepted) {
        if (!accepted)
            QTimer::singleShot(reportInterval, this, [this, number] { report(number); });
    });
}
