#include <support/TlsIdentity.h>

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <QByteArray>
#include <QFile>

#include <new>

namespace support {

namespace {

constexpr long daySeconds = 24 * 60 * 60;
constexpr auto ownNames = "IP:127.0.0.1,DNS:localhost";

template <class Object, class Free>
std::shared_ptr<Object> owned(Object *object, Free free)
{
    if (object == nullptr)
        throw std::bad_alloc();
    return {object, free};
}

/// Which certificate is wanted.
struct Wish
{
    QByteArray name;
    QByteArray extensionValue;
    int extension = NID_subject_alt_name;
    long endsAfterSeconds = daySeconds;
};

void addExtension(X509 *certificate, int extension, const QByteArray &value)
{
    const auto made = owned(X509V3_EXT_conf_nid(nullptr, nullptr, extension, value.constData()),
                            X509_EXTENSION_free);
    X509_add_ext(certificate, made.get(), -1);
}

/// Signed by `issuer`, by itself without one.
TlsIdentity make(const Wish &wish, const TlsIdentity *issuer)
{
    static long serial = 0;
    TlsIdentity made{owned(X509_new(), X509_free),
                     owned(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"), EVP_PKEY_free)};
    X509 *certificate = made.certificate.get();
    X509_set_version(certificate, X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate), ++serial);
    X509_gmtime_adj(X509_getm_notBefore(certificate), -2 * daySeconds);
    X509_gmtime_adj(X509_getm_notAfter(certificate), wish.endsAfterSeconds);
    X509_set_pubkey(certificate, made.key.get());
    X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate), "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char *>(wish.name.constData()), -1,
                               -1, 0);
    const TlsIdentity &signer = issuer == nullptr ? made : *issuer;
    X509_set_issuer_name(certificate, X509_get_subject_name(signer.certificate.get()));
    addExtension(certificate, wish.extension, wish.extensionValue);
    if (X509_sign(certificate, signer.key.get(), EVP_sha256()) == 0)
        throw std::bad_alloc();
    return made;
}

} // namespace

TlsIdentity TlsIdentity::authority()
{
    return make({"Authority of a test", "critical,CA:TRUE", NID_basic_constraints}, nullptr);
}

TlsIdentity TlsIdentity::good(const TlsIdentity &authority)
{
    return make({"good", ownNames}, &authority);
}

TlsIdentity TlsIdentity::expired(const TlsIdentity &authority)
{
    return make({.name = "expired", .extensionValue = ownNames, .endsAfterSeconds = -daySeconds},
                &authority);
}

TlsIdentity TlsIdentity::ofAnotherHost(const TlsIdentity &authority)
{
    return make({"of another host", "DNS:display.example"}, &authority);
}

TlsIdentity TlsIdentity::selfSigned()
{
    return make({"self-signed", ownNames}, nullptr);
}

bool TlsIdentity::write(const QString &fileName) const
{
    const std::unique_ptr<FILE, int (*)(FILE *)> file(
        std::fopen(QFile::encodeName(fileName).constData(), "w"), std::fclose);
    return file && PEM_write_X509(file.get(), certificate.get()) == 1;
}

TlsContextPtr TlsIdentity::serverContext() const
{
    const auto context = owned(SSL_CTX_new(TLS_server_method()), SSL_CTX_free);
    SSL_CTX_use_certificate(context.get(), certificate.get());
    SSL_CTX_use_PrivateKey(context.get(), key.get());
    return context;
}

} // namespace support
