#include <display/Advertising.h>

#include <common/EventLine.h>
#include <display/PluginLink.h>

#include <QTimer>

namespace {

using namespace std::chrono_literals;

constexpr auto reportInterval = 1s;

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
    m_address = ad[u"url"].toString();
    m_player.play(ad);
}

void Advertising::stop()
{
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
    report(shown);
}

void Advertising::report(bool shown)
{
    m_link.send(resultOf(shown), [this, shown, played = m_played](bool accepted) {
        if (accepted)
            return;
        QTimer::singleShot(reportInterval, this, [this, shown, played] {
            if (played == m_played)
                report(shown);
        });
    });
}
