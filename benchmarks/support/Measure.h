#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <vector>

namespace bench {

/// How long `work` takes, on the system's monotonic clock.
std::chrono::nanoseconds timeOf(const std::function<void()> &work);

/// Bytes of this process that are in memory now.
std::size_t residentBytes();

/// What all threads of this process have cost so far.
std::chrono::nanoseconds processCpuTime();

/// The time that a share of all times does not exceed, such as 0.9999 of them; sorts `times`, which
/// must not be empty.
std::chrono::nanoseconds percentile(std::vector<std::chrono::nanoseconds> &times, double share);

} // namespace bench
