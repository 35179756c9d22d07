// Pictures for the display: those that it asks for, at once or when the host's store has loaded
// them, and each again when the store loads it anew.

#include <plugin/ViewConnector.h>

#include <ImageDao.h>
#include <Singleton.h>

#include <QMetaEnum>

namespace {

/// The request names a picture twice, under the names that the host gives to these kinds.
constexpr int primaryKind = 0;
constexpr int fallbackKind = 1;

QString keyOfKind(int kind)
{
    const QMetaObject &meta = ImageId::staticMetaObject;
    const QMetaEnum kinds = meta.enumerator(meta.indexOfEnumerator("IdType"));
    return QString::fromLatin1(kinds.valueToKey(kind));
}

QString uriOf(const Image &image)
{
    return image.toUri(QString());
}

} // namespace

void ViewConnector::processGetImageRequest(const QJsonObject &request)
{
    const QJsonObject data = request.value(QStringLiteral("data")).toObject();
    const ImageId primary(data.value(keyOfKind(primaryKind)).toObject());
    ImageId sought = primary;

    auto image = Singleton<ImageDao>::instance().findImage(sought);
    if (image->value().isEmpty()) {
        sought = ImageId(data.value(keyOfKind(fallbackKind)).toObject());
        image = Singleton<ImageDao>::instance().findImage(sought);
    }

    const bool isFound = !image->value().isEmpty();
    if (isFound && uriOf(*image).isEmpty())
        addAwaitingLoadImage(sought, primary); // answered by onImageLoaded
    else
        sendImage(primary, uriOf(*image)); // also without a picture: the display learns at once
}

void ViewConnector::onImageLoaded(const Image &image)
{
    try {
        if (isAwaitingLoadImage(image)) {
            const auto uri = uriOf(image);
            sendImage(getAwaitingLoadImage(image), uri);
        } else if (sentImages.contains(image)) {
            sendImage(image, uriOf(image));
        }
    } catch (...) {
        // If another thread has announced the picture there is nobody above but the event loop.
        // One that is awaited stays so.
    }
}

void ViewConnector::sendImage(const ImageId &id, const QString &uri)
{
    sentImages.insert(id);
    // Not by way of JSON, which would copy the URI: whoever asks for a picture many times while the
    // display is down must not fill the memory with it.
    addMessage(
        {view::Message::Type::ImageData,
         {{QStringLiteral("id"), id.toJson().toVariantMap()}, {QStringLiteral("uri"), uri}}});
}

void ViewConnector::addAwaitingLoadImage(const ImageId &awaited, const ImageId &requested)
{
    awaitingImages.lock()->insert(awaited, requested);
}

bool ViewConnector::isAwaitingLoadImage(const ImageId &id) const
{
    return awaitingImages.lock()->contains(id);
}

ImageId ViewConnector::getAwaitingLoadImage(const ImageId &id)
{
    return awaitingImages.lock()->take(id);
}
