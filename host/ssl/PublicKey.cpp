#include <PublicKey.h>

#include "ErrorQueue.h"
#include "EvpPkeyContext.h"

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <algorithm>

namespace {

/// What stands before the coordinates: SEQUENCE { SEQUENCE { id-ecPublicKey, prime256v1 }, BIT
/// STRING of 66 bytes }, no unused bits, uncompressed point (RFC 5480; SEC 1, 2.3.3). OpenSSL reads
/// more than this, curves given by their parameters for one, which an attacker may choose.
constexpr std::string_view spkiPrefix("\x30\x59\x30\x13\x06\x07\x2a\x86\x48\xce\x3d\x02\x01"
                                      "\x06\x08\x2a\x86\x48\xce\x3d\x03\x01\x07\x03\x42\x00\x04",
                                      27);
constexpr qsizetype coordinatesSize = 64;

bool hasAcceptedForm(const QByteArray &der)
{
    return der.size() == std::ssize(spkiPrefix) + coordinatesSize &&
           der.startsWith(QByteArrayView(spkiPrefix));
}

} // namespace

ssl::PublicKey ssl::PublicKey::fromDer(const QByteArray &der)
{
    if (!hasAcceptedForm(der))
        return {};
    const ErrorQueue errors;
    const auto *bytes = reinterpret_cast<const unsigned char *>(der.constData());
    EvpPkey key(d2i_PUBKEY(nullptr, &bytes, static_cast<long>(der.size())));
    const EvpPkeyContext context(key ? EVP_PKEY_CTX_new(key.get(), nullptr) : nullptr);
    if (!context || EVP_PKEY_public_check(context.get()) != 1)
        return {};
    return PublicKey(std::move(key));
}

QByteArray ssl::PublicKey::der() const
{
    if (!isValid())
        return {};
    const ErrorQueue errors;
    unsigned char *bytes = nullptr;
    const int size = i2d_PUBKEY(m_key.get(), &bytes);
    QByteArray der(reinterpret_cast<const char *>(bytes), std::max(size, 0));
    OPENSSL_free(bytes);
    return der;
}
