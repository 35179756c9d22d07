#include <EvpPkey.h>

#include <openssl/evp.h>

void ssl::EVP_PKEY_cleaner::operator()(evp_pkey_st *key) const
{
    EVP_PKEY_free(key); // which wipes a private key
}
