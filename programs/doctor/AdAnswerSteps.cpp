#include <doctor/AdAnswerSteps.h>

#include <doctor/Redaction.h>

#include <Gcm.h>
#include <KeyAgreement.h>

#include <QJsonDocument>

#include <algorithm>
#include <iterator>
#include <limits>

namespace doctor {

namespace {

Text wrongService()
{
    return {"Это не сервис рекламы или он неисправен: проверьте ViewConnector.Ads:url и сообщите "
            "владельцу сервиса.",
            "This is no ad service, or a broken one: check ViewConnector.Ads:url and tell the "
            "service's owner."};
}

Finding stepFailed(const char *step, const Text &message)
{
    return adStepFailed(QLatin1String(step), message, wrongService());
}

Finding stepDone(const char *step, const Text &message)
{
    return adStepDone(QLatin1String(step), message);
}

Finding judgeKey(const QByteArray &field, ssl::PublicKey &key)
{
    if (field.isEmpty())
        return stepFailed(
            "key", {"В ответе нет ключа (поле X-PK).", "The answer has no key (field X-PK)."});
    key = ssl::PublicKey::fromDer(QByteArray::fromBase64(field));
    if (!key.isValid())
        return stepFailed("key", {"В поле X-PK нет ключа на кривой P-256.",
                                  "The field X-PK holds no key on the curve P-256."});
    return stepDone("key", {"Ключ сервиса верный, на кривой P-256.",
                            "The service's key is right, on the curve P-256."});
}

Finding judgeVector(const QByteArray &field, ssl::EncryptedDataGcm &data)
{
    const auto size = std::ssize(data.iv);
    if (field.isEmpty())
        return stepFailed("vector", {"В ответе нет вектора (поле X-IV).",
                                     "The answer has no vector (field X-IV)."});
    const auto vector = QByteArray::fromBase64(field);
    if (vector.size() < size)
        return stepFailed(
            "vector", Text("Вектор короче %1 байт: %2.", "The vector is shorter than %1 bytes: %2.")
                          .with(qint64{size}, vector.size()));
    std::copy_n(vector.begin(), size, data.iv.begin());
    return stepDone("vector", Text("Вектор: %1 байт.", "Vector: %1 bytes.").with(vector.size()));
}

Finding judgeBody(const HttpAnswer &reply, ssl::EncryptedDataGcm &data)
{
    const auto tagSize = std::ssize(data.tag);
    if (reply.isCutOff)
        return stepFailed("body",
                          {"Ответ больше 16 КиБ, касса его не примет.",
                           "The answer is larger than 16 KiB, which the register refuses."});
    if (reply.body.isEmpty())
        return stepFailed("body", {"Ответ пуст.", "The answer is empty."});
    if (reply.body.size() <= tagSize)
        return stepFailed("body", Text("Ответ слишком короткий: %1 байт, а одна метка занимает %2.",
                                       "The answer is too short: %1 bytes, where the tag alone has "
                                       "%2.")
                                      .with(reply.body.size(), qint64{tagSize}));
    std::copy_n(reply.body.end() - tagSize, tagSize, data.tag.begin());
    data.ciphertext = reply.body.chopped(tagSize);
    return stepDone("body", Text("Тело ответа: %1 байт, из них метка %2.",
                                 "Body of the answer: %1 bytes, of which the tag has %2.")
                                .with(reply.body.size(), qint64{tagSize}));
}

Finding judgePlaintext(const QByteArray &plaintext, QJsonObject &object)
{
    QJsonParseError error{};
    const auto document = QJsonDocument::fromJson(plaintext, &error);
    if (error.error != QJsonParseError::NoError)
        return stepFailed(
            "json", Text("Расшифрованное — не JSON: %1.", "What was decrypted is not JSON: %1.")
                        .with(error.errorString()));
    if (!document.isObject())
        return stepFailed(
            "json", {"Расшифрованное — не объект JSON.", "What was decrypted is no JSON object."});
    object = document.object();
    return stepDone("json",
                    {"Расшифрованное — объект JSON.", "What was decrypted is a JSON object."});
}

Finding judgeStream(const QJsonObject &object, AdStream &stream)
{
    const auto number = object[u"stream"];
    const auto listen = object[u"listen"].toString();
    if (listen.isEmpty())
        return stepFailed("stream-address", {"В ответе нет адреса потока (listen).",
                                             "The answer has no address of the stream (listen)."});
    constexpr qint64 none = -1;
    const auto integer = number.toInteger(none);
    if (integer < 0 || integer > std::numeric_limits<int>::max())
        return stepFailed("stream-address", {"Номер потока (stream) — не целое число.",
                                             "The stream's number (stream) is no integer."});
    if (!object[u"master"].isString())
        return stepFailed("stream-address", {"В ответе нет ключа потока (master).",
                                             "The answer has no key of the stream (master)."});
    stream = {listen, static_cast<int>(integer), object[u"master"].toString()};
    return stepDone("stream-address", Text("Назначен поток %1 на %2.", "Assigned: stream %1 at %2.")
                                          .with(stream.number, redactedUrl(listen)));
}

} // namespace

Finding adStepDone(const QString &step, const Text &message)
{
    return ok(QStringLiteral("ads"), message, {{QStringLiteral("step"), step}});
}

Finding adStepFailed(const QString &step, const Text &message, const Text &remedy)
{
    return failed(QStringLiteral("ads"), message, remedy, {{QStringLiteral("step"), step}});
}

Findings judgeAdAnswer(const HttpAnswer &reply, const ssl::PrivateKey &ownKey, AdStream &stream)
{
    Findings findings;
    ssl::PublicKey key;
    ssl::EncryptedDataGcm data;
    const auto stopsAfter = [&](Finding finding) {
        findings.push_back(std::move(finding));
        return findings.back().status == Status::Failed;
    };
    if (stopsAfter(judgeKey(reply.fields.value("x-pk"), key)) ||
        stopsAfter(judgeVector(reply.fields.value("x-iv"), data)) ||
        stopsAfter(judgeBody(reply, data)))
        return findings;

    const auto secret = ssl::deriveKey(ownKey, key); // both are valid
    findings.push_back(stepDone("secret", {"Общий ключ согласован.", "The common key is agreed."}));
    const auto plaintext = ssl::decryptWithGcm(secret, data);
    if (stopsAfter(plaintext.isEmpty()
                       ? stepFailed("decrypt", {"Ответ не расшифровывается: он изменён в пути или "
                                                "зашифрован другим ключом.",
                                                "The answer cannot be decrypted: it was changed on "
                                                "its way or encrypted under another key."})
                       : stepDone("decrypt", {"Ответ расшифрован.", "The answer is decrypted."})))
        return findings;
    QJsonObject object;
    if (!stopsAfter(judgePlaintext(plaintext, object)))
        stopsAfter(judgeStream(object, stream));
    return findings;
}

} // namespace doctor
