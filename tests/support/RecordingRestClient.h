#pragma once

#include <Locker.h>
#include <MockFactory.h>
#include <RestClient.h>

#include <log4qt/logger.h>

#include <QList>
#include <QSemaphore>
#include <QSharedPointer>
#include <QStringList>

#include <chrono>
#include <functional>
#include <mutex>
#include <utility>

namespace support {

/// A REST client without a network: remembers what it is asked for and answers what the test wants.
///
/// Owner: shared with MockFactory while injected. Thread: the set-up members before the first post,
/// all others on any thread.
class RecordingRestClient : public RestClient
{
public:
    using Clock = std::chrono::steady_clock;

    struct Post
    {
        QUrl url;
        QByteArray body;
        Headers headers;
        Clock::time_point at;
    };

    /// The result of the posts to come, one each; after them the last one stays. 0 unless set.
    void answer(const QList<int> &results) { state.lock()->results = results; }

    /// Runs inside each post, on the thread that posts, before the answer.
    std::function<void(const Post &)> duringPost;

    /// From now on each post waits inside `post` until `release` lets as many go.
    void hold() { state.lock()->holding = true; }
    void release(int posts = 1)
    {
        state.lock()->holding = false;
        gate.release(posts);
    }

    QList<Post> posts() const { return state.lock()->posts; }
    qsizetype postCount() const { return state.lock()->posts.size(); }
    QStringList paths() const
    {
        QStringList paths;
        for (const auto &post : posts())
            paths.append(post.url.path());
        return paths;
    }
    /// Every call but those of `requestTimeout` and `result`, in its order.
    QStringList calls() const { return state.lock()->calls; }
    const Log4Qt::Logger *loggerSet() const { return state.lock()->logger; }

    void setLogger(const Log4Qt::Logger *logger) override
    {
        const auto access = state.lock();
        access->logger = logger;
        access->calls.append("setLogger " + (logger ? logger->name() : QString("null")));
    }
    void setTargetAlias(const QString &alias) override { note("setTargetAlias " + alias); }
    void setCompactLogs(bool compact) override
    {
        note(compact ? "setCompactLogs true" : "setCompactLogs false");
    }
    void setRequestTimeout(int seconds) override
    {
        note(QString("setRequestTimeout %1").arg(seconds));
        state.lock()->timeout = seconds;
    }
    int requestTimeout() const override { return state.lock()->timeout; }

    int post(const QUrl &url, const QByteArray &body, const Headers &headers) override
    {
        const Post post{url, body, headers, Clock::now()};
        bool wait = false;
        {
            const auto access = state.lock();
            access->posts.append(post);
            access->calls.append("post " + url.toString());
            wait = access->holding;
        }
        if (wait)
            gate.acquire();
        if (duringPost)
            duringPost(post);

        const auto access = state.lock();
        access->result = access->results.isEmpty() ? 0 : access->results.constFirst();
        if (access->results.size() > 1)
            access->results.removeFirst();
        return access->result;
    }
    int result() const override { return state.lock()->result; }

private:
    struct State
    {
        QList<Post> posts;
        QStringList calls;
        const Log4Qt::Logger *logger = nullptr;
        QList<int> results;
        int result = 0;
        int timeout = 0;
        bool holding = false;
    };

    void note(const QString &call) { state.lock()->calls.append(call); }

    Locker<State, std::mutex> state;
    QSemaphore gate;
};

/// Makes a RecordingRestClient the one that everybody gets, until the end of the scope.
class InjectedRestClient
{
public:
    InjectedRestClient() { MockFactory<RestClient>::inject(m_client); }
    ~InjectedRestClient() { MockFactory<RestClient>::inject({}); }
    Q_DISABLE_COPY_MOVE(InjectedRestClient)

    RecordingRestClient *operator->() const { return m_client.data(); }
    QSharedPointer<RestClient> shared() const { return m_client; }

private:
    QSharedPointer<RecordingRestClient> m_client = QSharedPointer<RecordingRestClient>::create();
};

} // namespace support
