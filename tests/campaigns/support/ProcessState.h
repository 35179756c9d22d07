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

} // namespace campaign
