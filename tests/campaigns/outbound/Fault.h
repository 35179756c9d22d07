#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

class Outage;

/// A fault of a display or of the way to it. A value type.
struct Fault
{
    std::string name;
    bool letsRequestsArrive; ///< whole, at the display
    std::function<void(Outage &)> strike;
    bool lastsUntilTimeOut = false; ///< of each post

    /// All of them.
    static std::vector<Fault> all();
    /// Connections that are refused.
    static Fault refusal();
};

std::ostream &operator<<(std::ostream &out, const Fault &fault);
