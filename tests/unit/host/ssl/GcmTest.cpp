#include <Gcm.h>

#include "GcmVectors.h"

#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

template <std::size_t Size>
std::array<unsigned char, Size> bytes(const QByteArray &value)
{
    std::array<unsigned char, Size> result{};
    EXPECT_EQ(value.size(), std::ssize(result));
    std::copy_n(value.begin(), std::min<qsizetype>(Size, value.size()), result.begin());
    return result;
}

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

using Key = std::array<unsigned char, ssl::gcmKeySize>;

Key keyOf(const GcmVector &vector)
{
    return bytes<ssl::gcmKeySize>(hex(vector.key));
}

ssl::EncryptedDataGcm dataOf(const GcmVector &vector)
{
    return {bytes<ssl::gcmIvSize>(hex(vector.iv)), bytes<ssl::gcmTagSize>(hex(vector.tag)),
            hex(vector.ciphertext)};
}

class GcmVectors : public testing::TestWithParam<GcmVector>
{
};

INSTANTIATE_TEST_SUITE_P(Published, GcmVectors, testing::ValuesIn(gcmVectors));

const Key someKey = bytes<ssl::gcmKeySize>(QByteArray(32, 'k'));
const auto someIv = bytes<ssl::gcmIvSize>(QByteArray(16, 'v'));
const QByteArray someText = "a stream's address";

} // namespace

void PrintTo(const GcmVector &vector, std::ostream *out)
{
    *out << vector.source;
}

TEST_P(GcmVectors, Decryption_gives_the_published_plaintext)
{
    EXPECT_EQ(ssl::decryptWithGcm(keyOf(GetParam()), dataOf(GetParam())),
              hex(GetParam().plaintext));
}

TEST_P(GcmVectors, Encryption_gives_the_published_ciphertext_and_tag)
{
    const auto expected = dataOf(GetParam());
    const auto data =
        ssl::encryptWithGcm(keyOf(GetParam()), expected.iv, hex(GetParam().plaintext));
    EXPECT_EQ(data.ciphertext, expected.ciphertext);
    EXPECT_EQ(data.tag, expected.tag);
}

TEST(Gcm, A_change_of_any_bit_of_the_tag_gives_nothing)
{
    const auto data = ssl::encryptWithGcm(someKey, someIv, someText);
    ASSERT_EQ(ssl::decryptWithGcm(someKey, data), someText);
    for (std::size_t bit = 0; bit < 8 * data.tag.size(); ++bit) {
        auto changed = data;
        changed.tag[bit / 8] ^= static_cast<unsigned char>(1 << bit % 8);
        EXPECT_TRUE(ssl::decryptWithGcm(someKey, changed).isEmpty()) << "bit " << bit;
    }
}

TEST(Gcm, A_change_of_any_byte_of_the_ciphertext_gives_nothing)
{
    const auto data = ssl::encryptWithGcm(someKey, someIv, someText);
    for (qsizetype i = 0; i < data.ciphertext.size(); ++i) {
        auto changed = data;
        changed.ciphertext[i] = static_cast<char>(changed.ciphertext[i] ^ 1);
        EXPECT_TRUE(ssl::decryptWithGcm(someKey, changed).isEmpty()) << "byte " << i;
    }
}

TEST(Gcm, A_change_of_any_byte_of_the_vector_gives_nothing)
{
    const auto data = ssl::encryptWithGcm(someKey, someIv, someText);
    for (std::size_t i = 0; i < data.iv.size(); ++i) {
        auto changed = data;
        changed.iv[i] ^= 1;
        EXPECT_TRUE(ssl::decryptWithGcm(someKey, changed).isEmpty()) << "byte " << i;
    }
}

TEST(Gcm, Another_key_gives_nothing)
{
    const auto data = ssl::encryptWithGcm(someKey, someIv, someText);
    Key other = someKey;
    other.back() ^= 1;
    EXPECT_TRUE(ssl::decryptWithGcm(other, data).isEmpty());
}

TEST(Gcm, A_shortened_or_lengthened_ciphertext_gives_nothing)
{
    auto data = ssl::encryptWithGcm(someKey, someIv, someText);
    data.ciphertext.chop(1);
    EXPECT_TRUE(ssl::decryptWithGcm(someKey, data).isEmpty());
    data.ciphertext.append("..");
    EXPECT_TRUE(ssl::decryptWithGcm(someKey, data).isEmpty());
}

TEST(Gcm, A_tag_of_which_only_the_first_byte_is_right_gives_nothing)
{
    auto data = ssl::encryptWithGcm(someKey, someIv, someText);
    std::fill(data.tag.begin() + 1, data.tag.end(), static_cast<unsigned char>(0));
    EXPECT_TRUE(ssl::decryptWithGcm(someKey, data).isEmpty());
}

TEST(Gcm, A_megabyte_survives_the_way_there_and_back)
{
    const QByteArray text(1 << 20, 'x');
    const auto data = ssl::encryptWithGcm(someKey, someIv, text);
    EXPECT_NE(data.ciphertext, text);
    EXPECT_EQ(ssl::decryptWithGcm(someKey, data), text);
}
