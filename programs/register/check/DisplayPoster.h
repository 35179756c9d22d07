#pragma once

#include <register/check/Post.h>

#include <RestClient.h>

#include <QObject>
#include <QThread>
#include <QUrl>

/**
 * Posts messages to a display under test as the plug-in would, one at a time, but each only once,
 * and tells how each fared.
 *
 * Owner: the check. Thread: its members belong to the main thread and never block; the posts are
 * made on a thread of its own. Errors: they are the result.
 * Shut-down: the destructor waits for the post under way and drops the rest.
 */
class DisplayPoster : public QObject
{
    Q_OBJECT

public:
    /// The plug-in's own, unless `ViewConnector:timeout` is set.
    static constexpr int timeoutSeconds = 1;

    explicit DisplayPoster(QUrl display);
    ~DisplayPoster() override;

    void send(const Post &post);

Q_SIGNALS:
    /// Emitted on the main thread.
    void posted(const Post &post);

private:
    void post(Post post);

    const QUrl m_display;
    RestClient m_client; // of m_thread
    QThread m_thread;
    QObject m_worker; // lives on m_thread
};
