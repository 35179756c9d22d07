// Construction, start, end and destruction of the plug-in.

#include <plugin/HostEventCode.h>
#include <plugin/ViewConnector.h>

#include <ActivityNotifier.h>
#include <Config.h>
#include <ImageDao.h>
#include <Singleton.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr int defaultPort = 38081;
constexpr auto shutdownDeadline = 1000ms;

const QSet<int> &followedEvents()
{
    static const QSet<int> codes{
        static_cast<int>(HostEventCode::SecondScreenContent),
        static_cast<int>(HostEventCode::QrPaymentDialog),
        static_cast<int>(HostEventCode::PriceListDialog),
        static_cast<int>(HostEventCode::DialogClosed),
        static_cast<int>(HostEventCode::PaymentDraftUpdate),
    };
    return codes;
}

/// Lets a thread that is still busy outlive its parent: it is deleted when it ends. Destroying a
/// running QThread would abort the process.
void detach(QThread *thread)
{
    thread->setParent(nullptr);
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    if (thread->isFinished()) // it ended before the connection stood
        delete thread;
}

} // namespace

ViewConnector::ViewConnector()
    : BaseActivityListener(nullptr)
    , ignoredProps(getDocumentIgnoredProps())
    , client(QSharedPointer<view::Client>::create())
    , clientThread(new QThread(this))
    , messages(QSharedPointer<Locker<view::Messages, QMutex>>::create())
    , logger(Log4Qt::LogManager::logger(QStringLiteral("viewconnector")))
{
    client->moveToThread(clientThread);
}

bool ViewConnector::init()
{
    initTriggers();
    Singleton<ActivityNotifier>::instance().subscribe(this, followedEvents());

    const Config &config = Singleton<Config>::instance();
    server.reset(); // the port must be free before it is bound again
    server = QSharedPointer<HttpServer>::create(
        config.intValue(QStringLiteral("ViewConnector:port"), defaultPort));
    connect(server.data(), &HttpServer::requestReceived, this, &ViewConnector::requestReceived);

    // After a deinit the thread still runs and the client still has the queue: to hand it over
    // again would be a race. What deinit left connected must not be connected twice.
    if (!clientThread->isRunning())
        client->setMessages(messages);
    connect(this, &ViewConnector::hasMessage, client.data(), &view::Client::hasMessage,
            Qt::UniqueConnection);
    connect(clientThread, &QThread::started, client.data(), &view::Client::onStart,
            Qt::UniqueConnection);
    connect(clientThread, &QThread::finished, client.data(), &view::Client::stop,
            Qt::UniqueConnection);
    clientThread->start(QThread::InheritPriority);

    addMessage({view::Message::Type::Configure, readConfigurationPayload()});

    if (config.boolValue(QStringLiteral("View.Style:showImages"), false))
        connect(&Singleton<ImageDao>::instance(), &ImageDao::imageLoaded, this,
                &ViewConnector::onImageLoaded, Qt::UniqueConnection);

    const auto adsUrl = config.stringValue(QStringLiteral("ViewConnector.Ads:url"), {});
    if (!adsUrl.isEmpty())
        asyncGetAdsStream(QUrl(adsUrl));

    adTimetable = readAdTimetable();
    currentAd = 0;
    if (!adTimetable.isEmpty())
        sendAdvertising();
    return true;
}

bool ViewConnector::deinit()
{
    if (server)
        disconnect(server.data(), &HttpServer::requestReceived, this,
                   &ViewConnector::requestReceived);
    disconnect(this, &ViewConnector::hasMessage, client.data(), &view::Client::hasMessage);
    disconnect(clientThread, &QThread::started, client.data(), &view::Client::onStart);
    view::Messages dropped; // without the lock, as its values may call back
    std::swap(*messages->lock(), dropped);
    return BasicPlugin::deinit();
}

/// May run while the process exits, after the statics of this library and the application object
/// are gone: uses no singleton and no logger.
ViewConnector::~ViewConnector()
{
    stopClient();
}

void ViewConnector::stopClient()
{
    const QWeakPointer<view::Client> released = client;
    QObject *const receiver = client.data();
    QMetaObject::invokeMethod(
        receiver,
        [owned = std::move(client), thread = clientThread]() mutable {
            owned.reset(); // destroys the client, on its own thread
            thread->quit();
        },
        Qt::QueuedConnection);

    if (!clientThread->wait(QDeadlineTimer(shutdownDeadline))) {
        detach(clientThread);
        return;
    }
    // On a thread that never ran, or had ended before, the functor still waits in the client's
    // event queue and owns the client: neither would ever be freed.
    if (const auto stranded = released.toStrongRef())
        QCoreApplication::removePostedEvents(stranded.data(), QEvent::MetaCall);
}

void ViewConnector::addMessage(const view::Message &message)
{
    const auto replaced = messages->lock()->insert(message); // goes without the lock
    Q_EMIT hasMessage();
}
