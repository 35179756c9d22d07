#pragma once

#include <EvpPkey.h>
#include <HostExport.h>

#include <QByteArray>

namespace ssl {

/**
 * A private key on the curve P-256.
 *
 * Owner: whoever holds it; it moves but is not copied, and is wiped at its end. Thread: any one at
 * a time. Errors: what is no such key gives an invalid one.
 */
class HOST_EXPORT PrivateKey
{
public:
    PrivateKey() = default; ///< invalid
    explicit PrivateKey(EvpPkey key) : m_key(std::move(key)) {}

    /// Reads a PrivateKeyInfo (PKCS #8) in DER, with the curve named. Another curve, a key out of
    /// range and trailing bytes give an invalid key.
    static PrivateKey fromDer(const QByteArray &der);

    bool isValid() const { return m_key != nullptr; }
    /// The form that `fromDer` reads; empty for an invalid key. Secret, and the caller's to drop.
    QByteArray der() const;
    /// OpenSSL's object, which stays this key's; null for an invalid one.
    evp_pkey_st *handle() const { return m_key.get(); }

private:
    EvpPkey m_key;
};

} // namespace ssl
