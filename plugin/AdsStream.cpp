// The subscription to an ad service: the register sends a public key, the service answers with its
// own and with the stream's address, encrypted under the key that both agree on.

#include <plugin/AdEntry.h>
#include <plugin/ViewConnector.h>

#include <Gcm.h>
#include <KeyAgreement.h>

#include <log4qt/logger.h>

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QList>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrlQuery>

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>

namespace {

/// The private key waits for the answer on the reply, and goes with it.
constexpr auto privateKeyProperty = "ads_private";
/// An answer is some hundred bytes. A service that does not end its own would fill the memory, with
/// the body or, since Qt has no limit for it, with the header, which the end of the time ends. And
/// Qt takes long for some addresses, four times as long for one of twice the length.
constexpr qint64 maxAnswerBytes = 16'384;
constexpr auto maxAnswerTime = std::chrono::seconds(15);

/// Without a proxy Qt's network thread takes an unencrypted header off the socket byte by byte, and
/// hears of nothing else while bytes come: not of the time-out, nor that the plug-in ends. If it is
/// told no type of proxy, the socket finds out for itself that there is none, and has a buffer to
/// read from, which empties.
class InterruptibleConnections final : public QNetworkProxyFactory
{
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        QList<QNetworkProxy> proxies = proxyForQuery(query);
        for (QNetworkProxy &proxy : proxies) {
            if (proxy.type() == QNetworkProxy::NoProxy)
                proxy.setType(QNetworkProxy::DefaultProxy);
        }
        return proxies;
    }
};

/// The parts of an answer that has the right form; what they hold is not yet known to be true.
struct Answer
{
    ssl::PublicKey serviceKey;
    ssl::EncryptedDataGcm stream;
};

QByteArray decodedHeader(const QNetworkReply &reply, const char *name)
{
    return QByteArray::fromBase64(reply.rawHeader(name));
}

/// The body is the ciphertext with its tag behind it. The host may say by throwing that it cannot
/// read a key, and above a reply there is nobody but the event loop.
std::optional<Answer> readAnswer(const QNetworkReply &reply, const QByteArray &body)
try {
    const QByteArray iv = decodedHeader(reply, "X-IV");
    Answer answer{ssl::PublicKey::fromDer(decodedHeader(reply, "X-PK")), {}};
    auto &[ivBytes, tagBytes, ciphertext] = answer.stream;
    const auto tagSize = std::ssize(tagBytes);
    if (!answer.serviceKey.isValid() || body.size() < tagSize || iv.size() < std::ssize(ivBytes))
        return std::nullopt;

    std::copy_n(iv.begin(), ivBytes.size(), ivBytes.begin());
    std::copy_n(body.end() - tagSize, tagSize, tagBytes.begin());
    ciphertext = body.chopped(tagSize);
    return answer;
} catch (...) {
    return std::nullopt;
}

/// Nothing if the host agrees on no key or does not trust the text; it may say so by throwing, too.
QByteArray decrypted(const QByteArray &privateKey, const Answer &answer)
{
    try {
        const auto key = ssl::deriveKey(ssl::PrivateKey::fromDer(privateKey), answer.serviceKey);
        return ssl::decryptWithGcm(key, answer.stream);
    } catch (...) {
        return {};
    }
}

QUrl streamAddress(const QJsonObject &stream)
{
    QUrl address(QStringLiteral("ads://") + stream.value(QStringLiteral("listen")).toString());
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("stream"),
                       QString::number(stream.value(QStringLiteral("stream")).toInt()));
    query.addQueryItem(QStringLiteral("key"), stream.value(QStringLiteral("master")).toString());
    address.setQuery(query);
    return address;
}

} // namespace

void ViewConnector::asyncGetAdsStream(const QUrl &url) const
{
    // All that the host may throw from comes first: nothing has to be given back then.
    const auto [privateKey, publicKey] = ssl::generateKeyPairEC();
    const QByteArray privateDer = privateKey.der();
    const auto publicText = QString::fromLatin1(publicKey.der().toBase64());
    const auto body = QJsonDocument(QJsonObject{{QStringLiteral("pk"), publicText}})
                          .toJson(QJsonDocument::Compact);

    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    request.setHeader(QNetworkRequest::ContentLengthHeader, QByteArray::number(body.size()));
    request.setAttribute(QNetworkRequest::AutoDeleteReplyOnFinishAttribute, true);
    // Otherwise Qt inflates the answer, and keeps without a limit what inflates to nothing.
    request.setRawHeader("Accept-Encoding", "identity");

    auto *network = new QNetworkAccessManager; // goes with its one reply, or with this object
    network->setProxyFactory(new InterruptibleConnections);
    auto *reply = network->post(request, body);
    reply->setProperty(privateKeyProperty, privateDer);
    connect(reply, &QObject::destroyed, network, &QObject::deleteLater);
    connect(reply, &QNetworkReply::errorOccurred, this,
            &ViewConnector::onAdsStreamConnectErrorOccurred);
    connect(reply, &QNetworkReply::finished, this, &ViewConnector::onAdsStreamConnectFinished);

    connect(this, &QObject::destroyed, network, [network] {
        if (QCoreApplication::instance() != nullptr) // otherwise the process is about to end
            delete network;
    });

    // The time counts from when the request has gone out: a host may be busy after the start.
    auto *deadline = new QTimer(reply);
    deadline->setSingleShot(true);
    connect(deadline, &QTimer::timeout, reply, &QNetworkReply::abort);
    QMetaObject::invokeMethod(
        deadline, [deadline] { deadline->start(maxAnswerTime); }, Qt::QueuedConnection);

    // Qt's network thread reads ahead without a limit unless it is told one, which it can be only
    // once the request has started: in an event that was queued before this one, and again for each
    // redirection. It has to be above the limit of the answer, so that going beyond that is seen
    // here.
    const auto limitReadAhead = [reply] { reply->setReadBufferSize(2 * maxAnswerBytes); };
    QMetaObject::invokeMethod(reply, limitReadAhead, Qt::QueuedConnection);
    connect(reply, &QNetworkReply::redirected, reply, limitReadAhead, Qt::QueuedConnection);
    connect(reply, &QIODevice::readyRead, reply, [reply] {
        if (reply->bytesAvailable() > maxAnswerBytes)
            reply->abort();
    });
}

void ViewConnector::onAdsStreamConnectErrorOccurred()
{
    const auto *reply = qobject_cast<QNetworkReply *>(sender());
    logger->error(QStringLiteral("Ошибка подключения к сервису Ads: ") + reply->errorString());
    // It still has to finish, and goes then: Qt's network thread may tell the end so much later
    // than the error that a deletion which is asked for here comes first.
}

void ViewConnector::onAdsStreamConnectFinished()
{
    auto *reply = qobject_cast<QNetworkReply *>(sender());
    reply->disconnect(this);
    reply->deleteLater();

    const QByteArray body = reply->isOpen() ? reply->readAll() : QByteArray(); // closed by abort
    if (body.isEmpty() || reply->error() != QNetworkReply::NoError) {
        logger->error(QStringLiteral("Пустой ответ от сервера"));
        return;
    }
    const auto answer = readAnswer(*reply, body);
    if (!answer) {
        logger->error(QStringLiteral("Неверный ответ от сервера"));
        return;
    }

    const QByteArray plaintext =
        decrypted(reply->property(privateKeyProperty).toByteArray(), *answer);
    QJsonParseError error{};
    const QJsonObject stream = QJsonDocument::fromJson(plaintext, &error).object();
    if (error.error != QJsonParseError::NoError) {
        logger->error(
            QStringLiteral("Ошибка декодирования ответа от сервера: %1").arg(error.errorString()));
        return;
    }
    playStream(streamAddress(stream));
}

/// A stream is all there is to play until its result comes in.
void ViewConnector::playStream(const QUrl &address)
{
    logger->info(QStringLiteral("Добавляем поток %1").arg(address.toString()));
    adTimetable = {QVariantMap{{AdEntry::index, 0},
                               {AdEntry::time, std::numeric_limits<int>::max()},
                               {AdEntry::url, address}}};
    currentAd = 0;
    sendAdvertising();
}
