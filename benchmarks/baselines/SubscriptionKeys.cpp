#include <baselines/SubscriptionKeys.h>

#include <openssl/ec.h>
#include <openssl/x509.h>

#include <stdexcept>

namespace bench {

namespace {

using Agreement =
    std::unique_ptr<EVP_PKEY_CTX, decltype([](EVP_PKEY_CTX *each) { EVP_PKEY_CTX_free(each); })>;
using Cipher = std::unique_ptr<EVP_CIPHER_CTX,
                               decltype([](EVP_CIPHER_CTX *each) { EVP_CIPHER_CTX_free(each); })>;

constexpr int ivSize = 16;
constexpr int tagSize = 16;
constexpr int keySize = 32;

void check(bool isGood)
{
    if (!isGood)
        throw std::runtime_error("the cryptography failed");
}

const unsigned char *bytesOf(const QByteArray &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

unsigned char *bytesOf(QByteArray &bytes)
{
    return reinterpret_cast<unsigned char *>(bytes.data());
}

} // namespace

SubscriptionKeys::SubscriptionKeys() : m_pair(EVP_EC_gen("P-256"))
{
    check(m_pair != nullptr);
}

QByteArray SubscriptionKeys::publicKey() const
{
    QByteArray der(i2d_PUBKEY(m_pair.get(), nullptr), Qt::Uninitialized);
    auto *to = bytesOf(der);
    check(i2d_PUBKEY(m_pair.get(), &to) == der.size());
    return der;
}

QByteArray SubscriptionKeys::agreedKey(const QByteArray &serviceKey) const
{
    const auto *from = bytesOf(serviceKey);
    const Key peer(d2i_PUBKEY(nullptr, &from, static_cast<long>(serviceKey.size())));
    const Agreement agreement(EVP_PKEY_CTX_new(m_pair.get(), nullptr));
    QByteArray key(keySize, Qt::Uninitialized);
    std::size_t size = keySize;
    check(peer && agreement && EVP_PKEY_derive_init(agreement.get()) == 1 &&
          EVP_PKEY_derive_set_peer(agreement.get(), peer.get()) == 1 &&
          EVP_PKEY_derive(agreement.get(), bytesOf(key), &size) == 1 && size == keySize);
    return key;
}

QByteArray SubscriptionKeys::decrypt(const QByteArray &serviceKey, const QByteArray &iv,
                                     const QByteArray &body) const
{
    check(iv.size() == ivSize && body.size() > tagSize);
    const auto key = agreedKey(serviceKey);
    auto tag = body.last(tagSize);
    QByteArray text(body.size() - tagSize, Qt::Uninitialized);
    int size = 0;
    const Cipher cipher(EVP_CIPHER_CTX_new());
    check(cipher &&
          EVP_DecryptInit_ex(cipher.get(), EVP_aes_256_gcm(), nullptr, nullptr, nullptr) == 1 &&
          EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_AEAD_SET_IVLEN, ivSize, nullptr) == 1 &&
          EVP_DecryptInit_ex(cipher.get(), nullptr, nullptr, bytesOf(key), bytesOf(iv)) == 1 &&
          EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_AEAD_SET_TAG, tagSize, tag.data()) == 1 &&
          EVP_DecryptUpdate(cipher.get(), bytesOf(text), &size, bytesOf(body),
                            static_cast<int>(text.size())) == 1 &&
          EVP_DecryptFinal_ex(cipher.get(), bytesOf(text) + size, &size) == 1);
    return text;
}

} // namespace bench
