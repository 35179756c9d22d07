#pragma once

#include <doctor/Finding.h>
#include <doctor/PeerClock.h>

#include <chrono>
#include <optional>

namespace doctor {

struct DisplayResult
{
    Findings findings;
    std::optional<PeerClock> clock; ///< of the display, if its answer told the time
};

/// Whether the display can be reached at the setting "ViewConnector:server", and how fast. Asks it
/// for its page, which changes nothing of what it shows. `timeout` is that of a post.
DisplayResult checkDisplay(const QString &setting, std::chrono::seconds timeout);

} // namespace doctor
