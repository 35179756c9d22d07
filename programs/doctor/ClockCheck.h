#pragma once

#include <doctor/Finding.h>
#include <doctor/PeerClock.h>

namespace doctor {

/// Whether this machine's date can be right, whether it knows its time zone, and whether its clock
/// goes with those of the others.
Findings checkClock(const QDateTime &now, const QString &timeZone,
                    const std::vector<PeerClock> &peers);

/// The identifier of this machine's time zone; empty if none is set.
QString systemTimeZone();

} // namespace doctor
