#pragma once

#include <QTest>

#include <chrono>

namespace support {

using namespace std::chrono_literals;

/// Runs this thread's events until `condition` holds or the deadline has passed. Returns whether it
/// holds.
template <class Condition>
bool waitFor(Condition condition, std::chrono::milliseconds deadline = 30s)
{
    return QTest::qWaitFor(condition, static_cast<int>(deadline.count()));
}

/// Runs this thread's events for a time in which nothing is expected to happen.
inline void letPass(std::chrono::milliseconds time)
{
    QTest::qWait(static_cast<int>(time.count()));
}

} // namespace support
