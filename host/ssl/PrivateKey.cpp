#include <PrivateKey.h>

#include "ErrorQueue.h"
#include "EvpPkeyContext.h"

#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/x509.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

using Pkcs8 =
    std::unique_ptr<PKCS8_PRIV_KEY_INFO,
                    decltype([](PKCS8_PRIV_KEY_INFO *info) { PKCS8_PRIV_KEY_INFO_free(info); })>;

bool isOnNamedP256(EVP_PKEY *key)
{
    std::array<char, 32> group{};
    int fromParameters = 0;
    return EVP_PKEY_is_a(key, "EC") == 1 &&
           EVP_PKEY_get_utf8_string_param(key, OSSL_PKEY_PARAM_GROUP_NAME, group.data(),
                                          group.size(), nullptr) == 1 &&
           std::string_view(group.data()) == "prime256v1" &&
           EVP_PKEY_get_int_param(key, OSSL_PKEY_PARAM_EC_DECODED_FROM_EXPLICIT_PARAMS,
                                  &fromParameters) == 1 &&
           fromParameters == 0;
}

bool isConsistent(EVP_PKEY *key)
{
    const ssl::EvpPkeyContext context(EVP_PKEY_CTX_new(key, nullptr));
    return context && EVP_PKEY_check(context.get()) == 1;
}

} // namespace

ssl::PrivateKey ssl::PrivateKey::fromDer(const QByteArray &der)
{
    const ErrorQueue errors;
    const auto *bytes = reinterpret_cast<const unsigned char *>(der.constData());
    const auto *end = bytes + der.size();
    const Pkcs8 info(d2i_PKCS8_PRIV_KEY_INFO(nullptr, &bytes, static_cast<long>(der.size())));
    if (!info || bytes != end)
        return {};
    EvpPkey key(EVP_PKCS82PKEY(info.get()));
    if (!key || !isOnNamedP256(key.get()) || !isConsistent(key.get()))
        return {};
    return PrivateKey(std::move(key));
}

QByteArray ssl::PrivateKey::der() const
{
    const ErrorQueue errors;
    const Pkcs8 info(isValid() ? EVP_PKEY2PKCS8(m_key.get()) : nullptr);
    if (!info)
        return {};
    unsigned char *bytes = nullptr;
    const int size = i2d_PKCS8_PRIV_KEY_INFO(info.get(), &bytes);
    QByteArray der(reinterpret_cast<const char *>(bytes), std::max(size, 0));
    OPENSSL_clear_free(bytes, static_cast<std::size_t>(der.size()));
    return der;
}
