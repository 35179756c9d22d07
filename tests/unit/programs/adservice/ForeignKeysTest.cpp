#include <adservice/ForeignKeys.h>

#include <KeyAgreement.h>

#include <support/PrintQt.h>

#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/x509.h>

#include <gtest/gtest.h>

namespace {

/// Reads whatever OpenSSL takes for a public key.
ssl::EvpPkey readByOpenSsl(const QByteArray &der)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(der.constData());
    return ssl::EvpPkey(d2i_PUBKEY(nullptr, &bytes, static_cast<long>(der.size())));
}

std::string curveOf(const ssl::EvpPkey &key)
{
    std::array<char, 80> name{};
    EVP_PKEY_get_group_name(key.get(), name.data(), name.size(), nullptr);
    return name.data();
}

} // namespace

TEST(ForeignKeys, On_P_384_are_keys_but_not_for_a_register)
{
    const auto der = publicKeyOnP384();
    const auto key = readByOpenSsl(der);
    ASSERT_TRUE(key);
    EXPECT_EQ(curveOf(key), "secp384r1");
    EXPECT_FALSE(ssl::PublicKey::fromDer(der).isValid());
    EXPECT_NE(publicKeyOnP384(), der) << "each is a new one";
}

TEST(ForeignKeys, With_an_explicit_curve_are_the_same_key_in_a_form_that_a_register_refuses)
{
    const auto [privateKey, publicKey] = ssl::generateKeyPairEC();
    const auto before = publicKey.der();
    const auto der = withExplicitCurve(publicKey);

    const auto read = readByOpenSsl(der);
    ASSERT_TRUE(read);
    EXPECT_EQ(EVP_PKEY_eq(read.get(), publicKey.handle()), 1);
    EXPECT_GT(der.size(), 2 * before.size());
    EXPECT_FALSE(ssl::PublicKey::fromDer(der).isValid());
    EXPECT_EQ(publicKey.der(), before) << "the key itself is left alone";
}
