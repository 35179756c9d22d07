#pragma once

#include <QtGlobal>

#include <chrono>

/**
 * Lets a thread wait for descriptors until another thread wakes it.
 *
 * Thread: `wake` from any, `waitFor` from the one that waits. A call of `wake` before the wait ends
 * it at once. Errors: without a descriptor of its own, as `error` tells, it cannot be woken.
 */
class WakeUp
{
public:
    WakeUp();
    ~WakeUp();
    Q_DISABLE_COPY_MOVE(WakeUp)

    /// Why it cannot be used, a number of the system's; 0 if it can.
    int error() const { return m_error; }

    void wake() const;
    /// Returns once one of two descriptors can be read, it was woken, or the time is over; -1 is
    /// none.
    void waitFor(int first, int second, std::chrono::milliseconds atMost) const;

private:
    const int m_event;
    const int m_error;
};
