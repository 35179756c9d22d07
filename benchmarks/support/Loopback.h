#pragma once

#include <netinet/in.h>

namespace bench {

/// An address of this machine that no other one reaches; port 0 stands for any.
sockaddr_in loopback(int port);

/// A port that nothing listens on, for a server that must be told one. Throws std::system_error.
int freePort();

} // namespace bench
