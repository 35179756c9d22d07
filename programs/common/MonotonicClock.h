#pragma once

#include <chrono>

/// Milliseconds on the system's monotonic clock, which all processes of this machine share.
inline double monotonicMs()
{
    using Milliseconds = std::chrono::duration<double, std::milli>;
    return Milliseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}
