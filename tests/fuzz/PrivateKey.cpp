// A private key in DER.

#include "support/Fuzz.h"

#include <unit/host/ssl/Der.h>

#include <KeyAgreement.h>

void fuzzOne(const QByteArray &input)
{
    static const auto peer = ssl::PublicKey::fromDer(der::testPublicKey);
    const auto key = ssl::PrivateKey::fromDer(input);
    if (!key.isValid())
        return;
    const auto written = key.der();
    fuzz::require(ssl::PrivateKey::fromDer(written).der() == written,
                  "a key that was read can be written and read again");
    ssl::deriveKey(key, peer);
}
