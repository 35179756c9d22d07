#pragma once

#include <Singleton.h>

#include <atomic>
#include <mutex>
#include <utility>

namespace singleton {

template <class T>
struct Slot
{
    std::mutex mutex;
    std::atomic<T *> object = nullptr;
};

template <class T>
Slot<T> &slot()
{
    static auto &only = *new Slot<T>;
    return only;
}

} // namespace singleton

template <class T>
T &Singleton<T>::instance()
{
    auto &slot = singleton::slot<T>();
    if (T *existing = slot.object.load(std::memory_order_acquire))
        return *existing;

    const std::lock_guard guard(slot.mutex);
    T *object = slot.object.load(std::memory_order_relaxed);
    if (object == nullptr) {
        object = std::make_unique<T>().release(); // lives until the process ends
        slot.object.store(object, std::memory_order_release);
    }
    return *object;
}

template <class T>
std::unique_ptr<T> Singleton<T>::replace(std::unique_ptr<T> object)
{
    auto &slot = singleton::slot<T>();
    const std::lock_guard guard(slot.mutex);
    return std::unique_ptr<T>(slot.object.exchange(object.release(), std::memory_order_acq_rel));
}
