#pragma once

#include <openssl/ssl.h>
#include <openssl/x509.h>

#include <QString>

#include <memory>

namespace support {

using CertificatePtr = std::shared_ptr<X509>;
using PrivateKeyPtr = std::shared_ptr<EVP_PKEY>;
using TlsContextPtr = std::shared_ptr<SSL_CTX>;

/// A certificate with its key, made when asked for. A value type; the parts are shared.
/// Thread: any one at a time. Errors: std::bad_alloc if OpenSSL makes none.
struct TlsIdentity
{
    CertificatePtr certificate;
    PrivateKeyPtr key;

    /// One that signs others.
    static TlsIdentity authority();
    /// One of 127.0.0.1 and "localhost", signed by `authority` and valid now.
    static TlsIdentity good(const TlsIdentity &authority);
    /// As `good`, but it ended yesterday.
    static TlsIdentity expired(const TlsIdentity &authority);
    /// As `good`, but of another host.
    static TlsIdentity ofAnotherHost(const TlsIdentity &authority);
    /// As `good`, but signed by nobody else.
    static TlsIdentity selfSigned();

    /// Writes the certificate to a file, in PEM.
    bool write(const QString &fileName) const;
    /// What a server needs to present this.
    TlsContextPtr serverContext() const;
};

} // namespace support
