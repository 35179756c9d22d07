#include <display/Advertising.h>

#include <common/EventLine.h>
#include <common/JsonPoster.h>

#include <QTimer>

namespace {

using namespace std::chrono_literals;

constexpr auto reportInterval = 1s;

} // namespace

Advertising::Advertising(JsonPoster &link) : m_link(link)
{
    connect(&m_player, &AdPlayer::finished, this, &Advertising::finish);
}

void Advertising::play(const QJsonObject &ad)
{
    ++m_played;
    m_address = ad[u"url"].toString();
    m_player.play(ad);
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
    const QJsonObject result{{QStringLiteral("type"), QStringLiteral("result")},
                             {QStringLiteral("name"), QStringLiteral("adResult")},
                             {QStringLiteral("value"), shown}};
    m_link.send(result, [this, shown, played = m_played](bool accepted) {
        if (accepted)
            return;
        QTimer::singleShot(reportInterval, this, [this, shown, played] {
            if (played == m_played)
                report(shown);
        });
    });
}
