#pragma once

#include <HostExport.h>

#include <memory>

struct evp_pkey_st;

namespace ssl {

struct HOST_EXPORT EVP_PKEY_cleaner
{
    void operator()(evp_pkey_st *key) const;
};

/// A key of OpenSSL's; null for none.
using EvpPkey = std::unique_ptr<evp_pkey_st, EVP_PKEY_cleaner>;

} // namespace ssl
