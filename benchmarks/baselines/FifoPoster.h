#pragma once

#include <baselines/CurlPost.h>

#include <QVariantMap>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace bench {

/// The plug-in's threads without its queue: each message waits in an unbounded FIFO until a thread
/// has posted it, oldest first; a post that fails is tried again after an interval.
///
/// Thread: `add` from any. Shut-down: the destructor drops what waits and ends the thread.
class FifoPoster
{
public:
    FifoPoster(const std::string &url, std::chrono::milliseconds interval);
    ~FifoPoster();
    FifoPoster(const FifoPoster &) = delete;
    FifoPoster &operator=(const FifoPoster &) = delete;

    void add(const QVariantMap &message);
    /// Blocks until all that was added has been posted.
    void waitUntilEmpty();

private:
    void deliver();

    CurlPost m_post;
    const std::chrono::milliseconds m_interval;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<QVariantMap> m_waiting;
    bool m_ending = false;
    std::thread m_thread;
};

} // namespace bench
