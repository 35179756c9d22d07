#pragma once

#include <QtGlobal>

#include <openssl/err.h>

namespace ssl {

/// Leaves the calling thread's queue of OpenSSL errors as it found it, for it is shared with every
/// other user of OpenSSL in the process.
class ErrorQueue
{
public:
    ErrorQueue() { ERR_set_mark(); }
    ~ErrorQueue() { ERR_pop_to_mark(); }
    Q_DISABLE_COPY_MOVE(ErrorQueue)
};

} // namespace ssl
