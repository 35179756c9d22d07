#pragma once

#include <support/ScriptedAnswer.h>
#include <support/ScriptedRequest.h>

#include <QByteArray>

#include <functional>
#include <optional>

namespace support {

/// What an ad service answers to a subscription, and what a test may spoil of it. A value type.
struct AdAnswer
{
    QByteArray plaintext = R"({"listen":"host","stream":3,"master":"K"})";
    QByteArray iv = QByteArray("sixteen bytes iv"); ///< the first 16 are used, as by the register
    std::optional<QByteArray> publicKey = {};       ///< in DER, in place of the service's own
    std::function<QByteArray(QByteArray)> spoilBody = {}; ///< of ciphertext and tag
    std::optional<QByteArray> rawKey = {};                ///< the header "X-PK" as it is sent
    std::optional<QByteArray> rawIv = {};                 ///< the header "X-IV" as it is sent
    QByteArray status = "200 OK";
    bool hasKey = true; ///< whether the header "X-PK" is sent
    bool hasIv = true;  ///< whether the header "X-IV" is sent
};

/// The answer to the request of a subscription: a new key pair, and the plaintext encrypted under
/// what it agrees on with the key of the request.
ScriptedAnswer toScript(const AdAnswer &answer, const ScriptedRequest &request);

} // namespace support
