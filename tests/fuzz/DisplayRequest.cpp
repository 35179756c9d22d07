// A request of the display's to the plug-in.

#include "support/Fuzz.h"

#include <unit/plugin/ProbedConnector.h>

#include <support/FreshSingletons.h>

namespace {

const ImageId loaded(ImageId::GoodsCode, QStringLiteral("1"));
const ImageId awaited(ImageId::Barcode, QStringLiteral("2"));

void storePictures(const support::FreshSingletons &host)
{
    host.images().store(Image(loaded, QByteArrayLiteral("GIF89a")));
    host.images().store(Image(awaited, QByteArray()));
}

/// A plug-in with two advertisements, and nobody on its port.
void prepare(RecordingConnector &connector)
{
    connector.adTimetable = {QVariantMap{{QStringLiteral("id"), QStringLiteral("a")}},
                             QVariantMap{{QStringLiteral("id"), QStringLiteral("b")}}};
    connector.currentAd = 0;
    connector.sentImages.clear();
    connector.messages->lock()->clear();
}

} // namespace

void fuzzOne(const QByteArray &input)
{
    static const support::FreshSingletons host;
    static RecordingConnector connector;
    if (!connector.server) {
        connector.server = QSharedPointer<HttpServer>::create(0, HttpServerOptions());
        storePictures(host);
    }
    prepare(connector);
    connector.requestReceived({}, input);

    const auto sent = connector.takeSent();
    fuzz::require(sent.size() <= 1, "a request asks for one message at most");
    fuzz::require(sent.isEmpty() || sent.first().type == view::Message::Type::ShowAd ||
                      sent.first().type == view::Message::Type::ImageData,
                  "a request asks for a picture or an advertisement");
    connector.onImageLoaded(Image(awaited, QByteArrayLiteral("GIF89a")));
    connector.takeSent();
}
