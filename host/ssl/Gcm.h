#pragma once

#include <HostExport.h>

#include <QByteArray>

#include <array>
#include <span>

/// Authenticated encryption: AES-256 in Galois/Counter Mode (NIST SP 800-38D).
namespace ssl {

inline constexpr std::size_t gcmKeySize = 32; // bytes
inline constexpr std::size_t gcmIvSize = 16;  // bytes
inline constexpr std::size_t gcmTagSize = 16; // bytes; a shorter one could be forged

using GcmKey = std::span<const unsigned char, gcmKeySize>;

struct EncryptedDataGcm
{
    std::array<unsigned char, gcmIvSize> iv{};
    std::array<unsigned char, gcmTagSize> tag{};
    QByteArray ciphertext;
};

/// The plaintext; empty if the tag does not belong to the ciphertext under this key and vector.
/// Nothing is returned before the tag has been checked.
HOST_EXPORT QByteArray decryptWithGcm(GcmKey key, const EncryptedDataGcm &data);

/// Encrypts under a vector that must never have been used with this key. Throws std::runtime_error
/// if OpenSSL fails.
HOST_EXPORT EncryptedDataGcm encryptWithGcm(GcmKey key,
                                            const std::array<unsigned char, gcmIvSize> &iv,
                                            const QByteArray &plaintext);

} // namespace ssl
