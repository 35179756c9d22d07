#pragma once

#include <QtGlobal>

#include <sys/types.h>

namespace support {

/// How often threads of this process have left the processor so far. A value type.
struct ContextSwitches
{
    qint64 toWait = 0;    ///< which a thread did before each time that it woke
    qint64 toMakeWay = 0; ///< for others, while it had something to do

    qint64 all() const { return toWait + toMakeWay; }
};

/// Those of one thread; none if it has ended.
ContextSwitches contextSwitchesOf(pid_t thread);

/// Those of all threads but the caller's, added up.
ContextSwitches contextSwitchesOfOtherThreads();

} // namespace support
