#pragma once

#include <QByteArray>

/// Keys on P-256 in DER, put together byte by byte.
namespace der {

inline QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

/// SubjectPublicKeyInfo with a named curve; `point` is 65 bytes.
inline QByteArray publicKey(const QByteArray &point)
{
    return hex("3059301306072a8648ce3d020106082a8648ce3d030107034200") + point;
}

/// PrivateKeyInfo with a named curve and without the public key; `number` is 32 bytes.
inline QByteArray privateKey(const QByteArray &number)
{
    return hex("3041020100301306072a8648ce3d020106082a8648ce3d030107042730250201010420") + number;
}

// A pair made for these tests.
inline const auto testX = hex("9601458a54374aad733e1bfe41038199f5720ed5d64a0e39aaddb27ec8ae1963");
inline const auto testY = hex("c24b16abd534c9d1da6ab0896f0b8400ba171cb538507e2e72312a6a48c4ad50");
inline const auto testNumber =
    hex("b404e3a0589caf09622fac644a6b847a5a6bc4c2bbd1bbd163d144e8157a7f90");
inline const auto testPublicKey = publicKey(hex("04") + testX + testY);

} // namespace der
