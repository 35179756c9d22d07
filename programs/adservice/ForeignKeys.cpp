#include <adservice/ForeignKeys.h>

#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/x509.h>

#include <stdexcept>

namespace {

QByteArray publicDer(evp_pkey_st *key)
{
    const int size = key == nullptr ? 0 : i2d_PUBKEY(key, nullptr);
    if (size <= 0)
        throw std::runtime_error("a public key could not be encoded");
    QByteArray der(size, Qt::Uninitialized);
    auto *out = reinterpret_cast<unsigned char *>(der.data());
    i2d_PUBKEY(key, &out);
    return der;
}

} // namespace

QByteArray publicKeyOnP384()
{
    const ssl::EvpPkey key(EVP_EC_gen("P-384"));
    return publicDer(key.get());
}

QByteArray withExplicitCurve(const ssl::PublicKey &key)
{
    const ssl::EvpPkey copy(EVP_PKEY_dup(key.handle()));
    if (!copy || EVP_PKEY_set_utf8_string_param(copy.get(), OSSL_PKEY_PARAM_EC_ENCODING,
                                                OSSL_PKEY_EC_ENCODING_EXPLICIT) != 1)
        throw std::runtime_error("a public key could not be given its curve's parameters");
    return publicDer(copy.get());
}
