#pragma once

#include <Locker.h>
#include <RestClient.h>

#include <QByteArray>
#include <QList>
#include <QSemaphore>
#include <QString>

#include <mutex>

/// A REST client that posts as it should and remembers what it was asked for and how that ended.
///
/// Owner: shared with MockFactory while injected. Thread: `post` on the plug-in's, all others on
/// any.
class RecordedPosts : public RestClient
{
public:
    struct Post
    {
        QString path;
        int number = 0; // of the message
        int result = 0; // 0: delivered
    };

    int post(const QUrl &url, const QByteArray &body, const Headers &headers) override;

    /// Those that have ended and were not forgotten.
    QList<Post> ended() const { return m_state.lock()->ended; }
    /// How many were begun since the last `forget`.
    qsizetype begunCount() const { return m_state.lock()->begun; }
    /// How many have ended since the last `forget`.
    qsizetype endedCount() const { return m_state.lock()->ended.size(); }
    bool isPosting() const;
    /// The numbers of the delivered messages, in their order.
    QList<int> delivered() const;
    /// Between posts only.
    void forget();

    /// From now on each post waits before it begins, until `release` lets it go.
    void hold() { m_state.lock()->holds = true; }
    void release() { m_gate.release(); }

private:
    struct State
    {
        qsizetype begun = 0;
        QList<Post> ended;
        bool holds = false;
    };

    Locker<State, std::mutex> m_state;
    QSemaphore m_gate;
};

/// The number that starts the JSON text of a message of the campaign.
int numberOf(const QByteArray &body);
