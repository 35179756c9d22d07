#pragma once

#include <openssl/evp.h>

#include <QByteArray>

#include <memory>

namespace bench {

/// The cryptography of one subscription to an ad service by nothing but OpenSSL: P-256 and
/// AES-256-GCM. Every member throws std::runtime_error if that fails.
class SubscriptionKeys
{
public:
    /// Makes the key pair.
    SubscriptionKeys();

    /// The public key in DER.
    QByteArray publicKey() const;
    /// What the service has encrypted for this key: `body` is the ciphertext and its tag.
    QByteArray decrypt(const QByteArray &serviceKey, const QByteArray &iv,
                       const QByteArray &body) const;

private:
    struct Cleanup
    {
        void operator()(EVP_PKEY *key) const { EVP_PKEY_free(key); }
    };
    using Key = std::unique_ptr<EVP_PKEY, Cleanup>;

    QByteArray agreedKey(const QByteArray &serviceKey) const;

    Key m_pair;
};

} // namespace bench
