#include <PrivateKey.h>

#include "Der.h"

#include <KeyAgreement.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <openssl/err.h>

#include <map>
#include <string>

namespace {

/// The order of P-256, which no private number reaches.
const auto order = der::hex("ffffffff00000000ffffffffffffffffbce6faada7179e84f3b9cac2fc632551");

const auto explicitParameters =
    der::hex("308201790201003082010306072a8648ce3d02013081f7020101302c06072a8648ce3d0101022100fffff"
             "fff000000"
             "01000000000000000000000000ffffffffffffffffffffffff305b0420ffffffff0000000100000000000"
             "000000000"
             "0000fffffffffffffffffffffffc04205ac635d8aa3a93e7b3ebbd55769886bc651d06b0cc53b0f63bce3"
             "c3e27d260"
             "4b031500c49d360886e704936a6678e1139d26b7819f7e900441046b17d1f2e12c4247f8bce6e563a440f"
             "277037d81"
             "2deb33a0f4a13945d898c2964fe342e2fe1a7f9b8ee7eb4a7c0f9e162bce33576b315ececbb6406837bf5"
             "1f5022100"
             "ffffffff00000000ffffffffffffffffbce6faada7179e84f3b9cac2fc6325510201010"
             "46d306b0201010420") +
    der::testNumber + der::hex("a14403420004") + der::testX + der::testY;

/// A PrivateKeyInfo that holds the public point as well.
QByteArray withPoint(const QByteArray &x, const QByteArray &y)
{
    return der::hex("308187020100301306072a8648ce3d020106082a8648ce3d030107046d306b0201010420") +
           der::testNumber + der::hex("a14403420004") + x + y;
}

const std::map<std::string, QByteArray> unusableKeys{
    {"nothing", {}},
    {"text", "a private key"},
    {"a key that is cut short", der::privateKey(der::testNumber).chopped(1)},
    {"trailing bytes", der::privateKey(der::testNumber) + '\0'},
    {"the number zero", der::privateKey(QByteArray(32, '\0'))},
    {"a number out of range", der::privateKey(order)},
    {"a point of another key", withPoint(der::testY, der::testX)},
    {"P-256 by its parameters", explicitParameters},
    {"P-384",
     der::hex("3081b6020100301006072a8648ce3d020106052b8104002204819e30819b0201010430896cce15a172a6"
              "68d89dfe20ff2d81db88168c972b3a63a8ba59b150c4e16b17c8b69b227da183b05370be17886f0d82a1"
              "6403620004425916988c92ef65cbb8d3229e0d4e8b96171f1ed22f4d64ea29d1224e18608d5eb7772d4f"
              "c0a67a916d99691103a13ed9cb0aa0562ae62a6b17411dd450d06ae313a955d1f78d788cc573bb5e3cab"
              "f5d99ed5b727e19f4ecd43c818f78920b0")},
    {"Ed25519",
     der::hex("302e020100300506032b657004220420b2467e3e93780b8acf8efd61d97c17fe0e5a73a90b"
              "9b00a0e685567298b9800b")},
    {"a public key", der::testPublicKey},
    {"no PKCS #8 around it", der::hex("30770201010420") + der::testNumber +
                                 der::hex("a00a06082a8648ce3d030107a14403420004") + der::testX +
                                 der::testY},
};

} // namespace

TEST(PrivateKey, A_key_on_P_256_is_read_with_or_without_its_public_point)
{
    EXPECT_TRUE(ssl::PrivateKey::fromDer(der::privateKey(der::testNumber)).isValid());
    EXPECT_TRUE(ssl::PrivateKey::fromDer(withPoint(der::testX, der::testY)).isValid());
}

TEST(PrivateKey, A_key_is_written_so_that_the_same_key_is_read_again)
{
    const auto [key, publicKey] = ssl::generateKeyPairEC();
    const QByteArray bytes = key.der();
    EXPECT_TRUE(bytes.startsWith(
        der::hex("308187020100301306072a8648ce3d020106082a8648ce3d030107046d306b0201010420")));
    EXPECT_EQ(ssl::PrivateKey::fromDer(bytes).der(), bytes);
}

TEST(PrivateKey, A_key_that_is_none_is_invalid_and_empty)
{
    const ssl::PrivateKey key;
    EXPECT_FALSE(key.isValid());
    EXPECT_TRUE(key.der().isEmpty());
}

TEST(PrivateKey, Everything_but_a_number_in_range_on_the_named_curve_is_invalid)
{
    ERR_clear_error();
    for (const auto &[name, bytes] : unusableKeys) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(ssl::PrivateKey::fromDer(bytes).isValid());
        EXPECT_EQ(ERR_peek_error(), 0U) << "an error is left behind";
    }
}
