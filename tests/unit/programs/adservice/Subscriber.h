#pragma once

#include <adservice/Answer.h>

#include <Gcm.h>
#include <KeyAgreement.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

/// A register that subscribes, as far as the service can see.
class Subscriber
{
public:
    QByteArray request() const
    {
        return QJsonDocument(QJsonObject{{"pk", QString::fromLatin1(keys.second.der().toBase64())}})
            .toJson(QJsonDocument::Compact);
    }

    /// The plaintext of an answer; empty if it does not decrypt.
    QByteArray decrypt(const Answer &answer) const
    {
        const auto key = ssl::PublicKey::fromDer(field(answer, "X-PK"));
        return key.isValid() ? decrypt(answer, key) : QByteArray();
    }

    /// The same with the service's key read elsewhere.
    QByteArray decrypt(const Answer &answer, const ssl::PublicKey &servicesKey) const
    {
        ssl::EncryptedDataGcm data;
        const auto tagSize = std::ssize(data.tag);
        const auto iv = field(answer, "X-IV");
        if (iv.size() < std::ssize(data.iv) || answer.body.size() < tagSize)
            return {};
        std::copy_n(iv.begin(), data.iv.size(), data.iv.begin());
        std::copy_n(answer.body.end() - tagSize, tagSize, data.tag.begin());
        data.ciphertext = answer.body.chopped(tagSize);
        return ssl::decryptWithGcm(ssl::deriveKey(keys.first, servicesKey), data);
    }

    /// A field of base64, decoded; empty if it is missing or anything else.
    static QByteArray field(const Answer &answer, const QByteArray &name)
    {
        for (const auto &[key, value] : answer.fields)
            if (key == name)
                return *QByteArray::fromBase64Encoding(value,
                                                       QByteArray::AbortOnBase64DecodingErrors);
        return {};
    }

private:
    std::pair<ssl::PrivateKey, ssl::PublicKey> keys = ssl::generateKeyPairEC();
};
