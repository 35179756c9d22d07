#pragma once

#include <RestClient.h>

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QThread>
#include <QUrl>

#include <functional>

/**
 * Posts JSON objects to one address, one at a time, in their order.
 *
 * Owner: whoever sends.
 * Thread: its members belong to the main thread and never block; the posts are made on a thread of
 * its own. Errors: a request that is not accepted within two seconds, or that comes while 1000
 * others wait, is given up; its sender is told, and the log hears when the other side went away and
 * when it came back.
 * Shut-down: the destructor waits for the post under way and drops the rest; nobody is told then.
 */
class JsonPoster : public QObject
{
    Q_OBJECT

public:
    /// Called on the main thread with whether the request was accepted.
    using Outcome = std::function<void(bool accepted)>;

    JsonPoster(QUrl url, const QString &loggerName);
    ~JsonPoster() override;

    void send(const QJsonObject &request, Outcome outcome);

private:
    void post(const QByteArray &body, const Outcome &outcome);

    const QUrl m_url;
    RestClient m_client; // of m_thread
    QThread m_thread;
    QObject m_worker; // lives on m_thread
    int m_waiting = 0;
};
