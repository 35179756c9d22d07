#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>

/// Sleeps until `time`; less if a stop is requested, and then returns false.
inline bool sleepUntil(const std::stop_token &stop, std::chrono::steady_clock::time_point time)
{
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any().wait_until(lock, stop, time, [] { return false; });
    return !stop.stop_requested();
}
