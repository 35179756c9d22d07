#pragma once

#include <Locker.h>
#include <view/Message.h>
#include <view/Messages.h>

#include <QHash>
#include <QMutex>
#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QUrl>

class QTimer;
class RestClient;

namespace Log4Qt {
class Logger;
}

namespace view {

/**
 * Posts the waiting messages to the customer display, one at a time, the most urgent first.
 *
 * A message leaves the queue when the display has accepted it. After each post, successful or not,
 * the client pauses for one interval; a message that was not accepted is tried again after it, for
 * as long as it takes. With nothing to send the client sleeps until `hasMessage`.
 *
 * Owner: shared; created on the main thread and moved to the client thread, where it is destroyed.
 * Thread: every slot runs on the client thread. The exception is `setMessages`, which is called
 * directly, once, before that thread starts.
 * Errors: none leaves the client; a failed post is tried again. What the host throws counts as a
 * failure: of a post, or of the start, which is tried again before the next post. A message whose
 * values throw as they become JSON is dropped, but not for a lack of memory.
 * Shut-down: `stop` ends the pacing; a post under way finishes.
 */
class Client : public QObject
{
    Q_OBJECT

public:
    Client();
    ~Client() override;

    /// The address that messages of this type are posted to: the server's, with its path replaced
    /// by the type's. For a type without a path the server's address as it is.
    QUrl getUrl(view::Message::Type type) const;

public Q_SLOTS: // in the order of the virtual table
    /// An empty address keeps the one that is set.
    virtual void setServerAddress(const QString &address);
    /// Seconds for one post, answer included; below 2 means 1. Only after `onStart`.
    virtual void setTimeout(int seconds);
    /// Milliseconds between posts; below 1 means 250.
    virtual void setInterval(int milliseconds);
    /// Takes over the queue to send from.
    virtual void setMessages(QSharedPointer<Locker<view::Messages, QMutex>> messages);
    /// One delivery: posts the first waiting message, removes it if that succeeded, and arms the
    /// timer for the next. With nothing waiting the timer stays off.
    virtual void onTimeout();

    /// Creates the REST client and reads the settings; runs when the client thread starts, or
    /// before the first post if that start was missed.
    void onStart();
    /// Runs when the client thread finishes.
    void stop();
    /// Wakes the client: unless a delivery is due anyway, the first message goes out at once.
    void hasMessage();

protected:
    Log4Qt::Logger *logger;
    QTimer *timer;
    QUrl serverAddress;
    QSharedPointer<RestClient> restClient; // null until onStart, and after one that failed
    QHash<QString, QString> headers;
    QSharedPointer<Locker<view::Messages, QMutex>> messages; // null until setMessages

private:
    void start();
    /// Posts a message. Returns whether it may leave the queue.
    bool isDone(const Message &message);
    /// Takes a message out of the queue, or a newer one that has replaced it. It may be gone, and
    /// another picture wait there instead, if the plug-in was started again during the post.
    void remove(const Message &posted);
};

} // namespace view
