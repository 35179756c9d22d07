#include <KeyAgreement.h>

#include "Der.h"
#include "EcdhVectors.h"

#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <openssl/ec.h>
#include <openssl/err.h>
#include <openssl/evp.h>

#include <stdexcept>

namespace {

QByteArray bytes(const ssl::SharedKey &key)
{
    return {reinterpret_cast<const char *>(key.data()), std::ssize(key)};
}

class EcdhVectors : public testing::TestWithParam<EcdhVector>
{
};

INSTANTIATE_TEST_SUITE_P(Published, EcdhVectors, testing::ValuesIn(ecdhVectors));

} // namespace

void PrintTo(const EcdhVector &vector, std::ostream *out)
{
    *out << vector.source;
}

TEST_P(EcdhVectors, The_shared_key_is_the_published_coordinate)
{
    const auto own = ssl::PrivateKey::fromDer(der::privateKey(der::hex(GetParam().own)));
    const auto peer = ssl::PublicKey::fromDer(
        der::publicKey(der::hex("04") + der::hex(GetParam().peerX) + der::hex(GetParam().peerY)));
    EXPECT_EQ(bytes(ssl::deriveKey(own, peer)).toHex(), GetParam().shared);
}

TEST(KeyAgreement, Both_sides_derive_the_same_key)
{
    const auto [ownPrivate, ownPublic] = ssl::generateKeyPairEC();
    const auto [peerPrivate, peerPublic] = ssl::generateKeyPairEC();
    EXPECT_EQ(ssl::deriveKey(ownPrivate, peerPublic), ssl::deriveKey(peerPrivate, ownPublic));
}

TEST(KeyAgreement, Every_pair_is_a_new_one)
{
    const auto [firstPrivate, firstPublic] = ssl::generateKeyPairEC();
    const auto [secondPrivate, secondPublic] = ssl::generateKeyPairEC();
    EXPECT_NE(firstPrivate.der(), secondPrivate.der());
    EXPECT_NE(firstPublic.der(), secondPublic.der());
}

TEST(KeyAgreement, A_generated_public_key_is_an_uncompressed_point_on_the_named_curve)
{
    const auto [privateKey, publicKey] = ssl::generateKeyPairEC();
    const QByteArray bytes = publicKey.der();
    EXPECT_EQ(bytes.size(), 91);
    EXPECT_TRUE(bytes.startsWith(der::publicKey(der::hex("04"))));
    EXPECT_TRUE(ssl::PublicKey::fromDer(bytes).isValid());
}

TEST(KeyAgreement, The_halves_of_a_pair_belong_together)
{
    const auto [ownPrivate, ownPublic] = ssl::generateKeyPairEC();
    const auto [peerPrivate, peerPublic] = ssl::generateKeyPairEC();
    const auto read = ssl::PrivateKey::fromDer(ownPrivate.der());
    EXPECT_EQ(ssl::deriveKey(read, peerPublic), ssl::deriveKey(peerPrivate, ownPublic));
}

TEST(KeyAgreement, There_is_no_key_without_two_valid_ones)
{
    const auto [privateKey, publicKey] = ssl::generateKeyPairEC();
    EXPECT_THROW(ssl::deriveKey(ssl::PrivateKey(), publicKey), std::runtime_error);
    EXPECT_THROW(ssl::deriveKey(privateKey, ssl::PublicKey()), std::runtime_error);
}

TEST(KeyAgreement, There_is_no_key_with_a_peer_on_another_curve_and_no_error_is_left_behind)
{
    ERR_clear_error();
    const auto [privateKey, publicKey] = ssl::generateKeyPairEC();
    const ssl::PublicKey peer(ssl::EvpPkey(EVP_EC_gen("P-384")));
    EXPECT_THROW(ssl::deriveKey(privateKey, peer), std::runtime_error);
    EXPECT_EQ(ERR_peek_error(), 0U);
}

TEST(KeyAgreement, There_is_no_key_that_is_shorter_than_it_has_to_be)
{
    const ssl::PrivateKey own(ssl::EvpPkey(EVP_EC_gen("P-224")));
    const ssl::PublicKey peer(ssl::EvpPkey(EVP_EC_gen("P-224")));
    EXPECT_THROW(ssl::deriveKey(own, peer), std::runtime_error);
}
