#pragma once

#include <QtGlobal>

namespace campaign {

/// What this process holds of the system's at one moment. A value type.
struct ProcessState
{
    int threads = 0;
    int descriptors = 0;
    qint64 residentBytes = 0;

    /// The present one.
    static ProcessState now();
};

/// The most resident memory that this process has had since `forgetPeak`, or its start, in bytes.
qint64 peakBytes();
void forgetPeak();

} // namespace campaign
