#include <register/check/DisplayPoster.h>

#include <common/MonotonicClock.h>

#include <log4qt/logmanager.h>

#include <utility>

DisplayPoster::DisplayPoster(QUrl display) : m_display(std::move(display))
{
    m_client.setLogger(Log4Qt::LogManager::logger(QStringLiteral("register")));
    m_client.setTargetAlias(m_display.toString());
    m_client.setRequestTimeout(timeoutSeconds);
    m_worker.moveToThread(&m_thread);
    m_thread.start();
}

DisplayPoster::~DisplayPoster()
{
    m_thread.requestInterruption();
    m_thread.quit();
    m_thread.wait();
}

void DisplayPoster::send(const Post &message)
{
    QMetaObject::invokeMethod(
        &m_worker, [this, message] { post(message); }, Qt::QueuedConnection);
}

/// Runs on m_thread.
void DisplayPoster::post(Post post)
{
    if (m_thread.isInterruptionRequested())
        return;
    const auto json = QStringLiteral("application/json");
    QUrl url = m_display;
    url.setPath(post.path);
    post.startedMs = monotonicMs();
    post.result = m_client.post(
        url, post.body, {{QStringLiteral("Accept"), json}, {QStringLiteral("Content-Type"), json}});
    post.ms = monotonicMs() - post.startedMs;
    QMetaObject::invokeMethod(
        this, [this, post] { Q_EMIT posted(post); }, Qt::QueuedConnection);
}
