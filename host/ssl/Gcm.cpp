#include <Gcm.h>

#include "ErrorQueue.h"

#include <openssl/evp.h>

#include <limits>
#include <memory>
#include <stdexcept>

namespace {

using CipherContext =
    std::unique_ptr<EVP_CIPHER_CTX,
                    decltype([](EVP_CIPHER_CTX *context) { EVP_CIPHER_CTX_free(context); })>;

enum class Direction : int { Decrypt = 0, Encrypt = 1 };

/// A cipher that has been given key and vector; null if OpenSSL fails.
CipherContext start(Direction direction, ssl::GcmKey key,
                    const std::array<unsigned char, ssl::gcmIvSize> &iv)
{
    const int encrypt = static_cast<int>(direction);
    CipherContext context(EVP_CIPHER_CTX_new());
    // The length of the vector is 12 bytes unless set, and can only be set before the vector.
    if (!context ||
        EVP_CipherInit_ex(context.get(), EVP_aes_256_gcm(), nullptr, nullptr, nullptr, encrypt) !=
            1 ||
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_SET_IVLEN, ssl::gcmIvSize, nullptr) != 1 ||
        EVP_CipherInit_ex(context.get(), nullptr, nullptr, key.data(), iv.data(), encrypt) != 1)
        return nullptr;
    return context;
}

/// The transformed text, not yet authenticated; nothing if OpenSSL fails.
bool update(EVP_CIPHER_CTX *context, const QByteArray &in, QByteArray &out)
{
    if (in.size() > std::numeric_limits<int>::max())
        return false;
    out.resize(in.size());
    int written = 0;
    return in.isEmpty() ||
           EVP_CipherUpdate(context, reinterpret_cast<unsigned char *>(out.data()), &written,
                            reinterpret_cast<const unsigned char *>(in.constData()),
                            static_cast<int>(in.size())) == 1;
}

/// In GCM the last step writes no text.
bool finish(EVP_CIPHER_CTX *context)
{
    std::array<unsigned char, EVP_MAX_BLOCK_LENGTH> none{};
    int written = 0;
    return EVP_CipherFinal_ex(context, none.data(), &written) == 1;
}

} // namespace

QByteArray ssl::decryptWithGcm(GcmKey key, const EncryptedDataGcm &data)
{
    const ErrorQueue errors;
    const auto context = start(Direction::Decrypt, key, data.iv);
    auto tag = data.tag; // OpenSSL takes it as writable
    QByteArray plaintext;
    if (!context ||
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_SET_TAG, gcmTagSize, tag.data()) != 1 ||
        !update(context.get(), data.ciphertext, plaintext) || !finish(context.get()))
        return {};
    return plaintext;
}

ssl::EncryptedDataGcm ssl::encryptWithGcm(GcmKey key,
                                          const std::array<unsigned char, gcmIvSize> &iv,
                                          const QByteArray &plaintext)
{
    const ErrorQueue errors;
    EncryptedDataGcm data{.iv = iv, .tag = {}, .ciphertext = {}};
    const auto context = start(Direction::Encrypt, key, iv);
    if (!context || !update(context.get(), plaintext, data.ciphertext) || !finish(context.get()) ||
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_GET_TAG, gcmTagSize, data.tag.data()) != 1)
        throw std::runtime_error("the text could not be encrypted");
    return data;
}
