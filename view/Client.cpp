#include <view/Client.h>

#include <Config.h>
#include <MockFactory.h>
#include <RestClient.h>
#include <Singleton.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QJsonDocument>
#include <QTimer>

#include <new>
#include <utility>

namespace view {

namespace {

constexpr int minTimeoutSeconds = 1;
constexpr int minIntervalMs = 1;
constexpr int defaultIntervalMs = 250;
constexpr int notSet = -1;

/// The path of each message type on the display; empty for a type that has none.
QString path(Message::Type type)
{
    switch (type) {
    case Message::Type::Configure:
        return QStringLiteral("/configure");
    case Message::Type::UpdateDocument:
        return QStringLiteral("/updateDocument");
    case Message::Type::QrPayment:
        return QStringLiteral("/qrPayment");
    case Message::Type::ShowAd:
        return QStringLiteral("/showAD");
    case Message::Type::PriceList:
        return QStringLiteral("/priceList");
    case Message::Type::ImageData:
        return QStringLiteral("/image");
    case Message::Type::Content:
        return QStringLiteral("/content");
    case Message::Type::PaymentDraft:
        return QStringLiteral("/paymentdraft");
    }
    return {};
}

} // namespace

Client::Client()
    : logger(Log4Qt::LogManager::logger(QStringLiteral("viewconnector")))
    , timer(new QTimer(this))
    , serverAddress(QStringLiteral("http://127.0.0.1:38080"))
    , headers{{QStringLiteral("Accept"), QStringLiteral("application/json")},
              {QStringLiteral("Content-Type"), QStringLiteral("application/json")}}
{
    timer->setSingleShot(true);
    // Queued, so that each delivery is an event of its own.
    connect(timer, &QTimer::timeout, this, &Client::onTimeout, Qt::QueuedConnection);
}

Client::~Client() = default;

QUrl Client::getUrl(view::Message::Type type) const
{
    QUrl url = serverAddress;
    if (const QString typePath = path(type); !typePath.isEmpty())
        url.setPath(typePath);
    return url;
}

void Client::setServerAddress(const QString &address)
{
    if (!address.isEmpty())
        serverAddress = QUrl(address);
    logger->info(QStringLiteral("Установка адреса сервера: %1").arg(serverAddress.toString()));
}

void Client::setTimeout(int seconds)
{
    restClient->setRequestTimeout(qMax(seconds, minTimeoutSeconds));
    logger->info(QStringLiteral("Установка таймаута обращения к серверу: %1 с.")
                     .arg(restClient->requestTimeout()));
}

void Client::setInterval(int milliseconds)
{
    timer->setInterval(milliseconds < minIntervalMs ? defaultIntervalMs : milliseconds);
    logger->info(
        QStringLiteral("Установка интервала отправки сообщений: %1 мс.").arg(timer->interval()));
}

void Client::setMessages(QSharedPointer<Locker<view::Messages, QMutex>> queue)
{
    messages = std::move(queue);
}

void Client::onTimeout()
{
    const auto message = messages->lock()->first();
    if (!message)
        return;
    // The thread's start is missed when the plug-in ends before the thread runs, and is not
    // repeated when the plug-in starts again.
    if (!restClient)
        onStart();

    if (restClient && isDone(*message))
        remove(*message);
    timer->start();
}

void Client::remove(const Message &posted)
{
    QList<Message> removed; // outlives the lock
    const auto queue = messages->lock();
    if (posted.type != Message::Type::ImageData || queue->isNextOfItsType(posted))
        removed = queue->remove(posted.type);
}

bool Client::isDone(const Message &message)
{
    QByteArray body;
    try {
        body = QJsonDocument::fromVariant(message.data).toJson(QJsonDocument::Compact);
    } catch (const std::bad_alloc &) {
        return false; // there may be memory again
    } catch (...) {
        return true; // it would throw again and again, and hold up all others
    }
    try {
        restClient->post(getUrl(message.type), body, headers);
        return restClient->result() == 0;
    } catch (...) {
        return false;
    }
}

/// An exception would end the process: this is called by the event loop of the client thread.
void Client::onStart()
{
    try {
        start();
    } catch (...) {
        restClient.reset();
        timer->setInterval(defaultIntervalMs); // the settings may not have been reached
    }
}

void Client::start()
{
    restClient = MockFactory<RestClient>::create();
    restClient->setLogger(logger);
    restClient->setTargetAlias(QStringLiteral("tavro-view"));
    restClient->setCompactLogs(true);

    const Config &config = Singleton<Config>::instance();
    setServerAddress(config.stringValue(QStringLiteral("ViewConnector:server"), {}));
    setTimeout(config.intValue(QStringLiteral("ViewConnector:timeout"), notSet));
    setInterval(config.intValue(QStringLiteral("ViewConnector:interval"), notSet));
}

void Client::stop()
{
    timer->stop();
}

void Client::hasMessage()
{
    if (!timer->isActive())
        onTimeout();
}

} // namespace view
