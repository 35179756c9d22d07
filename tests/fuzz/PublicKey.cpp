// A public key in DER.

#include "support/Fuzz.h"

#include <unit/host/ssl/Der.h>

#include <KeyAgreement.h>

void fuzzOne(const QByteArray &input)
{
    static const auto own = ssl::PrivateKey::fromDer(der::privateKey(der::testNumber));
    const auto key = ssl::PublicKey::fromDer(input);
    if (!key.isValid())
        return;
    fuzz::require(key.der() == input, "a key has one form");
    ssl::deriveKey(own, key);
}
