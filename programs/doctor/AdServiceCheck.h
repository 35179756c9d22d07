#pragma once

#include <doctor/Finding.h>
#include <doctor/PeerClock.h>

#include <optional>

namespace doctor {

struct AdServiceResult
{
    Findings findings;
    std::optional<PeerClock> clock; ///< of the ad service, if its answer told the time
};

/// Subscribes to the ad service of "ViewConnector.Ads:url" as the plug-in does, one finding for
/// each step, the last of which is the first that failed. The service may assign a stream, which is
/// asked for and left at once. Its key, and the private key, are never told.
AdServiceResult checkAdService(const QString &setting);

} // namespace doctor
