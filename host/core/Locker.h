#pragma once

#include <mutex>
#include <utility>

/**
 * A value together with the mutex that guards it; the value can only be reached with the mutex
 * held.
 *
 *     queue.lock()->insert(message);       // held for this one call
 *
 *     const auto access = queue.lock();    // held for the scope
 *
 * Owner: whoever holds the Locker; an Access must not outlive it.
 * Thread: `lock` is thread-safe and blocks while another thread holds the mutex.
 * Errors: an exception while an Access lives releases the mutex.
 */
template <class Value, class Mutex>
class Locker
{
public:
    template <class Guarded>
    class Access
    {
    public:
        Access(Guarded &value, Mutex &mutex) : m_guard(mutex), m_value(&value) {}

        Guarded *operator->() const { return m_value; }
        Guarded &operator*() const { return *m_value; }

    private:
        std::unique_lock<Mutex> m_guard;
        Guarded *m_value;
    };

    [[nodiscard]] Access<Value> lock() { return {m_value, m_mutex}; }
    [[nodiscard]] Access<const Value> lock() const { return {m_value, m_mutex}; }

private:
    mutable Mutex m_mutex;
    Value m_value;
};
