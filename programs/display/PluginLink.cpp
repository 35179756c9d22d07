#include <display/PluginLink.h>

#include <common/MonotonicClock.h>
#include <display/Journal.h>

PluginLink::PluginLink(const QUrl &pluginUrl, Journal &journal)
    : m_journal(journal), m_poster(pluginUrl, QStringLiteral("display"))
{
}

void PluginLink::send(const QJsonObject &request, const JsonPoster::Outcome &outcome)
{
    m_poster.send(request, [this, request, outcome, sentMs = monotonicMs()](bool accepted) {
        m_journal.addRequest(request, sentMs, accepted);
        outcome(accepted);
    });
}
