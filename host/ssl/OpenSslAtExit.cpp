// OpenSSL would free what it shares when the process begins to exit, while a plug-in that nobody
// destroyed may still post by https on a thread of its own. It is asked for here, since the first
// who uses OpenSSL decides.

#include <openssl/crypto.h>

namespace {

[[maybe_unused]] const int isKept = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);

} // namespace
