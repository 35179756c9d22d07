#include <support/AdAnswer.h>

#include <Gcm.h>
#include <KeyAgreement.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace support {

namespace {

QByteArray encrypted(const AdAnswer &answer, const ssl::SharedKey &key)
{
    std::array<unsigned char, ssl::gcmIvSize> iv{};
    std::copy_n(answer.iv.begin(), std::min<qsizetype>(answer.iv.size(), std::ssize(iv)),
                iv.begin());
    const auto data = ssl::encryptWithGcm(key, iv, answer.plaintext);
    return data.ciphertext +
           QByteArray(reinterpret_cast<const char *>(data.tag.data()), std::ssize(data.tag));
}

} // namespace

ScriptedAnswer toScript(const AdAnswer &answer, const ScriptedRequest &request)
{
    const auto encoded = QJsonDocument::fromJson(request.body).object().value("pk").toString();
    const auto peer = ssl::PublicKey::fromDer(QByteArray::fromBase64(encoded.toLatin1()));
    const auto [privateKey, publicKey] = ssl::generateKeyPairEC();
    QByteArray body = encrypted(answer, ssl::deriveKey(privateKey, peer));
    if (answer.spoilBody)
        body = answer.spoilBody(body);

    QByteArray bytes = "HTTP/1.1 " + answer.status + "\r\n";
    if (answer.hasKey)
        bytes += "X-PK: " +
                 answer.rawKey.value_or(answer.publicKey.value_or(publicKey.der()).toBase64()) +
                 "\r\n";
    if (answer.hasIv)
        bytes += "X-IV: " + answer.rawIv.value_or(answer.iv.toBase64()) + "\r\n";
    bytes += "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    return {.bytes = bytes};
}

} // namespace support
