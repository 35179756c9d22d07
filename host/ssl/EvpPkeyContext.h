#pragma once

#include <openssl/evp.h>

#include <memory>

namespace ssl {

struct EvpPkeyContextCleaner
{
    void operator()(EVP_PKEY_CTX *context) const { EVP_PKEY_CTX_free(context); }
};

/// One operation with a key.
using EvpPkeyContext = std::unique_ptr<EVP_PKEY_CTX, EvpPkeyContextCleaner>;

} // namespace ssl
