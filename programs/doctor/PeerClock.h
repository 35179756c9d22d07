#pragma once

#include <doctor/Text.h>

#include <QDateTime>

namespace doctor {

/// What time it was on another machine, and here. A value type.
struct PeerClock
{
    Text peer; ///< who told it
    QDateTime theirs;
    QDateTime ours;
};

} // namespace doctor
