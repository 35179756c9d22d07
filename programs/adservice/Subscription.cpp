#include <adservice/Subscription.h>

#include <adservice/ForeignKeys.h>
#include <adservice/Random.h>

#include <Gcm.h>
#include <KeyAgreement.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <span>
#include <stdexcept>

namespace {

constexpr qsizetype longIvSize = 20;
constexpr qsizetype usualIvSize = 12; // of GCM, but not of this exchange
constexpr qsizetype endlessPieceSize = 16'384;

class BadRequest : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

QByteArray bytes(std::span<const unsigned char> data)
{
    return {reinterpret_cast<const char *>(data.data()), std::ssize(data)};
}

ssl::PublicKey readSubscribersKey(const QByteArray &request)
{
    const auto document = QJsonDocument::fromJson(request);
    if (!document.isObject())
        throw BadRequest("the body is no JSON object");
    const auto text = document.object().value(QStringLiteral("pk"));
    if (!text.isString())
        throw BadRequest("\"pk\" is missing or no text");
    const auto der = QByteArray::fromBase64Encoding(text.toString().toUtf8(),
                                                    QByteArray::Base64Encoding |
                                                        QByteArray::AbortOnBase64DecodingErrors);
    if (!der)
        throw BadRequest("\"pk\" is not base64");
    auto key = ssl::PublicKey::fromDer(*der);
    if (!key.isValid())
        throw BadRequest("\"pk\" is no public key on P-256 in DER");
    return key;
}

QByteArray plaintext(const Announcement &announcement, Fault fault)
{
    const auto &[listen, stream, key] = announcement;
    switch (fault) {
    case Fault::NotJson:
        return listen.toUtf8() + " is no JSON";
    case Fault::NotObject:
        return QJsonDocument(QJsonArray{listen, stream, key}).toJson(QJsonDocument::Compact);
    case Fault::MissingFields:
        return "{}";
    default:
        break;
    }
    const auto number = fault == Fault::StreamAsText ? QJsonValue(QString::number(stream)) : stream;
    const auto master = fault == Fault::WrongKey ? Announcement::randomKey() : key;
    return QJsonDocument(QJsonObject{{QStringLiteral("listen"), listen},
                                     {QStringLiteral("stream"), number},
                                     {QStringLiteral("master"), master}})
        .toJson(QJsonDocument::Compact);
}

QByteArray announcedKey(const ssl::PublicKey &key, Fault fault)
{
    switch (fault) {
    case Fault::ForeignCurve:
        return publicKeyOnP384();
    case Fault::ExplicitCurve:
        return withExplicitCurve(key);
    case Fault::BadKey:
        return "no key";
    default:
        return key.der();
    }
}

QByteArray announcedIv(const QByteArray &iv, Fault fault)
{
    switch (fault) {
    case Fault::Iv12:
        return iv.left(usualIvSize);
    case Fault::Iv20:
        return iv + randomBytes(longIvSize - iv.size());
    default:
        return iv;
    }
}

QByteArray answerBody(const ssl::EncryptedDataGcm &data, Fault fault)
{
    const QByteArray tag = bytes(data.tag);
    QByteArray ciphertext = data.ciphertext;
    switch (fault) {
    case Fault::Empty:
        return {};
    case Fault::ShortTag:
        return tag.chopped(1);
    case Fault::Tampered:
        ciphertext.front() = static_cast<char>(ciphertext.front() ^ 1);
        break;
    default:
        break;
    }
    return ciphertext + tag;
}

Answer encryptedAnswer(const ssl::PublicKey &subscribersKey, const Announcement &announcement,
                       Fault fault)
{
    const auto [ownPrivate, ownPublic] = ssl::generateKeyPairEC();
    const auto sharedKey = ssl::deriveKey(ownPrivate, subscribersKey);
    std::array<unsigned char, ssl::gcmIvSize> iv{};
    const QByteArray random = randomBytes(std::ssize(iv));
    std::copy(random.begin(), random.end(), iv.begin());
    const auto data = ssl::encryptWithGcm(sharedKey, iv, plaintext(announcement, fault));

    Answer answer{.fields = {{"Content-Type", "application/octet-stream"},
                             {"X-PK", announcedKey(ownPublic, fault).toBase64()},
                             {"X-IV", announcedIv(bytes(iv), fault).toBase64()}},
                  .body = answerBody(data, fault)};
    if (fault == Fault::Endless)
        answer.more = [] { return QByteArray(endlessPieceSize, '.'); };
    return answer;
}

} // namespace

QString Announcement::randomKey()
{
    constexpr qsizetype keySize = 16;
    return QString::fromLatin1(randomBytes(keySize).toHex());
}

std::optional<Answer> answerSubscription(const QByteArray &request,
                                         const Announcement &announcement, Fault fault)
{
    if (fault == Fault::Refuse || fault == Fault::NoAnswer)
        return std::nullopt;
    if (fault == Fault::Status)
        return textAnswer(500, "the service is out of order");
    try {
        return encryptedAnswer(readSubscribersKey(request), announcement, fault);
    } catch (const BadRequest &error) {
        return textAnswer(400, error.what());
    }
}
