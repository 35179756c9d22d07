#pragma once

#include <PublicKey.h>

#include <QByteArray>

/// Public keys that a careful register refuses, each a SubjectPublicKeyInfo in DER. Both functions
/// throw std::runtime_error if OpenSSL fails.

/// A new key on the curve P-384.
QByteArray publicKeyOnP384();

/// The key with the parameters of its curve in place of the curve's name.
QByteArray withExplicitCurve(const ssl::PublicKey &key);
