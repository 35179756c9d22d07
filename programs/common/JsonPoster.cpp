#include <common/JsonPoster.h>

#include <log4qt/logmanager.h>

#include <QJsonDocument>

#include <utility>

namespace {

constexpr int timeoutSeconds = 2;
constexpr int maxWaiting = 1000;

} // namespace

JsonPoster::JsonPoster(QUrl url, const QString &loggerName) : m_url(std::move(url))
{
    m_client.setLogger(Log4Qt::LogManager::logger(loggerName));
    m_client.setTargetAlias(m_url.toString());
    m_client.setRequestTimeout(timeoutSeconds);
    m_worker.moveToThread(&m_thread);
    m_thread.start();
}

JsonPoster::~JsonPoster()
{
    m_thread.requestInterruption();
    m_thread.quit();
    m_thread.wait();
}

void JsonPoster::send(const QJsonObject &request, Outcome outcome)
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
void JsonPoster::post(const QByteArray &body, const Outcome &outcome)
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
