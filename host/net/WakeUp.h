#pragma once

#include <QtGlobal>

#include <chrono>

/**
 * Lets a thread wait for a descriptor until another thread wakes it.
 *
 * Thread: `wake` from any, `waitFor` from the one that waits. A call of `wake` before the wait ends
 * it at once.
 */
class WakeUp
{
public:
    WakeUp();
    ~WakeUp();
    Q_DISABLE_COPY_MOVE(WakeUp)

    void wake() const;
    /// Returns once `descriptor` can be read, it was woken, or the time is over.
    void waitFor(int descriptor, std::chrono::milliseconds atMost) const;

private:
    const int m_event;
};
