#pragma once

#include <string>

/// What names mean in this program, for libcurl too: those that end with `domain` are this machine,
/// unless their look-up hangs; everything else is asked of the system. Thread: any.
namespace ownresolver {

inline const std::string domain = ".till.example";

/// From now on the look-up of a name of `domain` does not return.
void hang();
/// Lets those that hang return, and all others.
void goOn();

} // namespace ownresolver
