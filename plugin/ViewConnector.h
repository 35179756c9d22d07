#pragma once

#include <Action.h>
#include <BaseActivityListener.h>
#include <BasicPlugin.h>
#include <DocumentWatcher.h>
#include <EContext.h>
#include <HttpServer.h>
#include <Image.h>
#include <Locker.h>
#include <view/Client.h>
#include <view/Message.h>
#include <view/Messages.h>

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QSet>
#include <QSharedPointer>
#include <QStringList>
#include <QThread>
#include <QUrl>
#include <QVariant>

namespace Log4Qt {
class Logger;
}

/**
 * The plug-in: tells the customer display what happens at the register.
 *
 * It turns the host's events, changes of the receipt, settings, pictures and advertisements into
 * messages, which wait in `messages` until `client` has posted them; and it answers the display's
 * requests on a port of its own.
 *
 * Owner: the host, through the Qt plug-in entry; one instance in a process.
 * Thread: the host's main thread, all of it. Only the queue is shared with the client thread. No
 * member waits for the network.
 * Errors: none of its own reaches the host: what is missing takes its default, what is unknown is
 * ignored, what the display did not accept is sent again. What the host throws in a call that the
 * plug-in makes passes through the host's own call of the plug-in, which stays usable; after a
 * start that threw, `deinit` comes before the next. On the client thread or out of a request of the
 * display it ends there, and what was under way is tried again or left.
 * Shut-down: `deinit` cuts the links and drops what waits; the thread goes on and `init` may follow
 * again. The destructor ends the thread and waits for it at most a second; a post that takes longer
 * ends by itself afterwards, without this object.
 */
class ViewConnector : public BaseActivityListener, public BasicPlugin, public DocumentWatcher
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "su.tavro.AbstractPlugin")

public:
    ViewConnector();
    ~ViewConnector() override;

    // The virtual operations, in the order of the virtual table.

public Q_SLOTS:
    /// Turns an event of the register into at most one message. Unknown codes are ignored.
    void handleEvent(const Event &) override;

public:
    /// Starts delivery and queues the configuration as the first message. Always true.
    bool init() override;
    /// Stops following the display and drops all waiting messages.
    bool deinit() override;
    /// Follows another receipt, null for none, and sends it at once.
    void setDocument(const QSharedPointer<AbstractDocument> &document) override;
    /// Queues a message and wakes the client; every message goes through here.
    virtual void addMessage(const view::Message &message);

protected:
    /// The advertisements of the settings, in ascending "index".
    virtual QList<QVariant> readAdTimetable() const;
    virtual void processRequest(const QJsonObject &request);
    virtual void processGetImageRequest(const QJsonObject &request);
    virtual void processResult(const QJsonObject &result);
    virtual void processAdResult(const QJsonObject &result);
    /// Queues the advertisement at `currentAd`, if there is any.
    virtual void sendAdvertising();
    virtual void sendImage(const ImageId &id, const QString &uri);

public Q_SLOTS:
    /// A request of the display: acknowledged first, then acted on.
    void requestReceived(const RequestHeader &header, const QByteArray &content);
    /// The host's store has loaded a picture.
    void onImageLoaded(const Image &image);

Q_SIGNALS:
    /// A message has been queued. Emitted on the main thread, received on the client thread.
    void hasMessage();

protected:
    /// The names of the document's properties that the display does not get.
    static QStringList getDocumentIgnoredProps();
    void initTriggers();
    EContext::Result onDocumentModified(const control::Action &action);
    QVariantMap getDocumentPayload() const;
    QVariantMap readConfigurationPayload() const;
    /// Remembers that the picture `awaited` answers the request for `requested`; a later request
    /// for the same picture takes the earlier one's place. These three lock `awaitingImages`.
    void addAwaitingLoadImage(const ImageId &awaited, const ImageId &requested);
    bool isAwaitingLoadImage(const ImageId &id) const;
    /// The picture that was requested, which is then no longer awaited.
    ImageId getAwaitingLoadImage(const ImageId &id);
    /// Subscribes at an ad service with a new key pair and returns at once; the outcome reaches the
    /// two handlers below, on the main thread.
    void asyncGetAdsStream(const QUrl &url) const;
    void onAdsStreamConnectFinished();
    void onAdsStreamConnectErrorOccurred();

    const QStringList ignoredProps;
    QSharedPointer<view::Client> client; // lives on clientThread
    QThread *clientThread;               // a child, unless it outlives this object
    QSharedPointer<Locker<view::Messages, QMutex>> messages; // shared with the client
    qsizetype currentAd = 0;                    // index in adTimetable; its size stands for the end
    QList<QVariant> adTimetable;                // maps with "id", "index", "url", "time"
    QSharedPointer<HttpServer> server;          // null until init
    QMap<int, view::Message::Type> dialogTypes; // what is open on the display, by dialog id
    Locker<QMap<ImageId, ImageId>, QMutex> awaitingImages; // awaited picture to the one asked for
    QSet<ImageId> sentImages;                              // for the current document
    Log4Qt::Logger *logger;

private:
    void sendContent(const Event &event);
    void sendPaymentDraft(const Event &event);
    void showQrPayment(const Event &event);
    void showOrScrollPriceList(const Event &event);
    void closeDialog(const Event &event);
    void playStream(const QUrl &address);
    void stopClient();
};
