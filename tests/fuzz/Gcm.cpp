// Authenticated decryption: the input is vector, tag and ciphertext.

#include "support/Fuzz.h"

#include <Gcm.h>

#include <algorithm>

void fuzzOne(const QByteArray &input)
{
    constexpr std::array<unsigned char, ssl::gcmKeySize> key{1, 2, 3};
    ssl::EncryptedDataGcm data;
    const auto head = input.leftJustified(ssl::gcmIvSize + ssl::gcmTagSize, '\0');
    std::copy_n(head.begin(), data.iv.size(), data.iv.begin());
    std::copy_n(head.begin() + std::ssize(data.iv), data.tag.size(), data.tag.begin());
    data.ciphertext = head.mid(ssl::gcmIvSize + ssl::gcmTagSize);

    const auto plaintext = ssl::decryptWithGcm(key, data);
    fuzz::require(plaintext.isEmpty() ||
                      ssl::encryptWithGcm(key, data.iv, plaintext).tag == data.tag,
                  "only what has the right tag is decrypted");
    auto good = ssl::encryptWithGcm(key, data.iv, data.ciphertext);
    fuzz::require(ssl::decryptWithGcm(key, good) == data.ciphertext,
                  "what was encrypted can be decrypted");
    good.tag[0] ^= 1;
    fuzz::require(ssl::decryptWithGcm(key, good).isEmpty(), "a flipped tag is refused");
}
