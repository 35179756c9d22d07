#include <display/PluginLink.h>

#include <log4qt/logmanager.h>

#include <QJsonDocument>

#include <utility>

namespace {

constexpr int timeoutSeconds = 2;
constexpr int maxWaiting = 1000;

} // namespace

PluginLink::PluginLink(const QUrl &pluginUrl) : m_url(pluginUrl)
{
    m_client.setLogger(Log4Qt::LogManager::logger(QStringLiteral("display")));
    m_client.setTargetAlias(m_url.toString());
    m_client.setRequestTimeout(timeoutSeconds);
    m_worker.moveToThread(&m_thread);
    m_thread.start();
}

PluginLink::~PluginLink()
{
    m_thread.requestInterruption();
    m_thread.quit();
    m_thread.wait();
}

void PluginLink::send(const QJsonObject &request, Outcome outcome)
{
    if (m_waiting == maxWaiting) {
        outcome(false);
        return;
    }
    ++m_waiting;
    QMetaObject::invokeMethod(
        &m_worker,
        [this, body = QJsonDocument(request).toJson(QJsonDocument::Compact),
         outcome = std::move(outcome)] { post(body, outcome); },
        Qt::QueuedConnection);
}

/// Runs on m_thread.
void PluginLink::post(const QByteArray &body, const Outcome &outcome)
{
    if (m_thread.isInterruptionRequested())
        return;
    const RestClient::Headers headers{
        {QStringLiteral("Content-Type"), QStringLiteral("application/json")}};
    const bool accepted = m_client.post(m_url, body, headers) == 0;
    QMetaObject::invokeMethod(
        this,
        [this, accepted, outcome] {
            --m_waiting;
            outcome(accepted);
        },
        Qt::QueuedConnection);
}
