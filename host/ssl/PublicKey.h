#pragma once

#include <EvpPkey.h>
#include <HostExport.h>

#include <QByteArray>

namespace ssl {

/**
 * A public key on the curve P-256, the only one that is used.
 *
 * Owner: whoever holds it; it moves but is not copied. Thread: any one at a time.
 * Errors: what is no such key gives an invalid one.
 */
class HOST_EXPORT PublicKey
{
public:
    PublicKey() = default; ///< invalid
    explicit PublicKey(EvpPkey key) : m_key(std::move(key)) {}

    /// Reads a SubjectPublicKeyInfo in DER, with the curve named and the point uncompressed: other
    /// curves, curves given by their parameters, other forms of the point, points that are not on
    /// the curve and trailing bytes give an invalid key.
    static PublicKey fromDer(const QByteArray &der);

    bool isValid() const { return m_key != nullptr; }
    /// The form that `fromDer` reads, 91 bytes; empty for an invalid key.
    QByteArray der() const;
    /// OpenSSL's object, which stays this key's; null for an invalid one.
    evp_pkey_st *handle() const { return m_key.get(); }

private:
    EvpPkey m_key;
};

} // namespace ssl
