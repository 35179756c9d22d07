#include <PublicKey.h>

#include "Der.h"

#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <openssl/err.h>

#include <map>
#include <string>

namespace {

/// The order of the field of P-256, which no coordinate reaches.
const auto fieldOrder =
    der::hex("ffffffff00000001000000000000000000000000ffffffffffffffffffffffff");

QByteArray withLastByteChanged(QByteArray bytes)
{
    bytes.back() = static_cast<char>(bytes.back() ^ 1);
    return bytes;
}

/// P-256 with its parameters spelt out in place of its name.
const auto explicitParameters =
    der::hex("3082014b3082010306072a8648ce3d02013081f7020101302c06072a8648ce3d0101022100ffffffff000"
             "000010000"
             "00000000000000000000ffffffffffffffffffffffff305b0420ffffffff0000000100000000000000000"
             "0000000ff"
             "fffffffffffffffffffffc04205ac635d8aa3a93e7b3ebbd55769886bc651d06b0cc53b0f63bce3c3e27d"
             "2604b0315"
             "00c49d360886e704936a6678e1139d26b7819f7e900441046b17d1f2e12c4247f8bce6e563a440f277037"
             "d812deb33"
             "a0f4a13945d898c2964fe342e2fe1a7f9b8ee7eb4a7c0f9e162bce33576b315ececbb6406837bf51f5022"
             "100ffffff"
             "ff00000000ffffffffffffffffbce6faada7179e84f3b9cac2fc632551020101034200") +
    der::hex("04") + der::testX + der::testY;

const std::map<std::string, QByteArray> unusableKeys{
    {"nothing", {}},
    {"text", "MFkwEwYHKoZIzj0CAQYIKoZIzj0DAQcDQgAE"},
    {"91 bytes of zero", QByteArray(91, '\0')},
    {"91 bytes of ones", QByteArray(91, '\xff')},
    {"one byte too few", der::testPublicKey.chopped(1)},
    {"one byte too many", der::testPublicKey + '\0'},
    {"two keys", der::testPublicKey + der::testPublicKey},
    {"the point alone", der::hex("04") + der::testX + der::testY},
    {"a length that is longer than needed", der::hex("308159") + der::testPublicKey.mid(2)},
    {"a compressed point", der::hex("3039301306072a8648ce3d020106082a8648ce3d030107032200") +
                               der::hex("02") + der::testX},
    {"a hybrid point", der::publicKey(der::hex("06") + der::testX + der::testY)},
    {"the other hybrid point", der::publicKey(der::hex("07") + der::testX + der::testY)},
    {"the point at infinity",
     der::hex("3019301306072a8648ce3d020106082a8648ce3d030107030200") + der::hex("00")},
    {"the point at infinity, padded", der::publicKey(QByteArray(65, '\0'))},
    {"the origin", der::publicKey(der::hex("04") + QByteArray(64, '\0'))},
    {"a point beside the curve",
     der::publicKey(der::hex("04") + der::testX + withLastByteChanged(der::testY))},
    {"a coordinate out of range", der::publicKey(der::hex("04") + fieldOrder + der::testY)},
    {"unused bits", der::hex("3059301306072a8648ce3d020106082a8648ce3d030107034201") +
                        der::hex("04") + der::testX + der::testY},
    {"P-256 by its parameters", explicitParameters},
    {"P-384",
     der::hex("3076301006072a8648ce3d020106052b810400220362000421bcc63bf639128c95bed2fb187653f1afec"
              "359275708f81996b7cf76ce5c0cd615767f14552953bf479d09c4291b5813bcb241ea60bc581ed5ec607"
              "90dd53a9870547e28ac17f8aae2b34d3ca68aa089ad10b4b8973b7c35e6eeb183e6c9570")},
    {"secp256k1",
     der::hex("3056301006072a8648ce3d020106052b8104000a03420004372b3e53143e6cadf43e1adcae9e6c2ee47e"
              "a785d2829edb8e07514b93a49bc16022bed6789f7ce8925148fd9824fa344656875452994c03aeaf23c8"
              "a483f273")},
    {"secp256k1 in the place of P-256",
     der::publicKey(der::hex("04372b3e53143e6cadf43e1adcae9e6c2ee47ea785d2829edb8e07514b93a49bc160"
                             "22bed6789f7ce8925148fd9824fa344656875452994c03aeaf23c8a483f273"))},
    {"brainpoolP256r1",
     der::hex("305a301406072a8648ce3d020106092b2403030208010107034200045a6cb41cd729b26f3244333ae11e"
              "3bbd23113f978df2fc0da51c9878d25e7fd4a7b78004cad03fd097a5c804b6dd491fd17fcd6df7bcea1e"
              "78fba53e3833be39")},
    {"P-224",
     der::hex("304e301006072a8648ce3d020106052b81040021033a00045358151c76e813cdb442301db6d17b234a08"
              "9204c7d2b46b6c71b1ca8525857404939418c60943b8d66c10021bb759e788845cb74bd1f430")},
    {"Ed25519",
     der::hex("302a300506032b6570032100e32bd3bc6191fe2d6e586426cb304e004d5eade2ca5e8de4bf"
              "d19bf5989532a7")},
    {"X25519",
     der::hex("302a300506032b656e0321007a33676a74a4b12d9e7a9777543e152549f4c1ed475bcc015a3"
              "626728f2b0630")},
    {"a private key", der::privateKey(der::testNumber)},
};

} // namespace

TEST(PublicKey, A_key_on_P_256_is_read_and_written_unchanged)
{
    const auto key = ssl::PublicKey::fromDer(der::testPublicKey);
    EXPECT_TRUE(key.isValid());
    EXPECT_EQ(key.der(), der::testPublicKey);
}

TEST(PublicKey, A_key_that_is_none_is_invalid_and_empty)
{
    const ssl::PublicKey key;
    EXPECT_FALSE(key.isValid());
    EXPECT_TRUE(key.der().isEmpty());
}

TEST(PublicKey, Everything_but_an_uncompressed_point_on_the_named_curve_is_invalid)
{
    for (const auto &[name, bytes] : unusableKeys) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(ssl::PublicKey::fromDer(bytes).isValid());
    }
}

TEST(PublicKey, A_refused_key_leaves_no_error_behind_for_other_users_of_OpenSSL)
{
    ERR_clear_error();
    for (const auto &[name, bytes] : unusableKeys) {
        SCOPED_TRACE(name);
        ssl::PublicKey::fromDer(bytes);
        EXPECT_EQ(ERR_peek_error(), 0U);
    }
}

TEST(PublicKey, Any_flipped_bit_gives_an_invalid_key_or_another_one)
{
    for (qsizetype bit = 0; bit < 8 * der::testPublicKey.size(); ++bit) {
        QByteArray changed = der::testPublicKey;
        changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ 1 << bit % 8);
        const auto key = ssl::PublicKey::fromDer(changed);
        EXPECT_TRUE(!key.isValid() || key.der() == changed) << "bit " << bit;
    }
}
