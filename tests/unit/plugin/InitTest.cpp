// The start of the plug-in.

#include "PluginFixture.h"

#include "../view/ProbedClient.h"

#include <support/OwnLoopback.h>

#include <QSet>

namespace {

/// A store of pictures that tells who follows it.
class ProbedImageDao : public ImageDao
{
public:
    int followers() const { return receivers(SIGNAL(imageLoaded(Image))); }
};

/// Looks at the state of the start at the points where the start calls an overridable operation.
class JournalingConnector : public RecordingConnector
{
public:
    void addMessage(const view::Message &message) override
    {
        if (message.type == view::Message::Type::Configure) {
            triggersAtConfigure = triggers().size();
            followedAtConfigure = Singleton<ActivityNotifier>::instance().notify(Event(103));
            listeningAtConfigure = server && server->isListening();
            runningAtConfigure = clientThread->isRunning();
            wiredAtConfigure = receivers(SIGNAL(hasMessage()));
        }
        steps.append(QString("message %1").arg(static_cast<int>(message.type)));
        RecordingConnector::addMessage(message);
    }
    QList<QVariant> readAdTimetable() const override
    {
        const auto &images = dynamic_cast<const ProbedImageDao &>(Singleton<ImageDao>::instance());
        steps.append(QString("read timetable, %1 follow images").arg(images.followers()));
        return timetable;
    }
    void sendAdvertising() override
    {
        steps.append(QString("send advertisement %1 of %2").arg(currentAd).arg(adTimetable.size()));
    }

    QList<QVariant> timetable;
    mutable QStringList steps;
    qsizetype triggersAtConfigure = -1;
    qsizetype followedAtConfigure = -1;
    bool listeningAtConfigure = false;
    bool runningAtConfigure = false;
    int wiredAtConfigure = -1;
};

class Init : public PluginFixture
{
protected:
    Init()
    {
        auto probed = std::make_unique<ProbedImageDao>();
        images = probed.get();
        Singleton<ImageDao>::replace(std::move(probed));
        auto journaling = std::make_unique<JournalingConnector>();
        journal = journaling.get();
        connector = std::move(journaling);
    }

    QStringList linesOf(const QString &logger) const { return log.textsOf(logger); }

    ProbedImageDao *images = nullptr;
    JournalingConnector *journal = nullptr;
};

TEST_F(Init, It_returns_true)
{
    EXPECT_TRUE(connector->init());
}

TEST_F(Init, It_returns_true_even_if_the_port_cannot_be_opened)
{
    host.config().setValue("ViewConnector:port", -1);
    EXPECT_TRUE(connector->init());
    EXPECT_FALSE(connector->server->isListening());
    EXPECT_TRUE(waitUntilAllSent()); // and works otherwise
}

TEST_F(Init, Everything_stands_before_the_configuration_is_queued)
{
    connector->init();
    EXPECT_EQ(journal->triggersAtConfigure, 3);
    EXPECT_EQ(journal->followedAtConfigure, 1);
    EXPECT_TRUE(journal->listeningAtConfigure);
    EXPECT_TRUE(journal->runningAtConfigure);
    EXPECT_EQ(journal->wiredAtConfigure, 1);
}

TEST_F(Init, The_configuration_is_the_first_message_and_images_come_before_the_timetable)
{
    host.config().setValue("View.Style:showImages", true);
    journal->timetable = {QVariantMap{{"id", 1}}, QVariantMap{{"id", 2}}};
    connector->init();
    EXPECT_EQ(journal->steps, (QStringList{"message 0", "read timetable, 1 follow images",
                                           "send advertisement 0 of 2"}));
    EXPECT_EQ(connector->sent.constFirst(),
              view::Message(Type::Configure, connector->readConfigurationPayload()));
    EXPECT_EQ(connector->adTimetable, journal->timetable);
}

TEST_F(Init, An_empty_timetable_shows_no_advertisement)
{
    connector->init();
    EXPECT_EQ(journal->steps, (QStringList{"message 0", "read timetable, 0 follow images"}));
    EXPECT_TRUE(connector->adTimetable.isEmpty());
}

TEST_F(Init, The_display_gets_the_configuration_first_with_null_for_the_missing_pictures)
{
    connector->init();
    ASSERT_TRUE(waitUntilAllSent());
    ASSERT_EQ(rest->paths(), QStringList{"/configure"});
    const auto body = rest->posts().constFirst().body;
    EXPECT_THAT(body.toStdString(), testing::HasSubstr("\"View.Style:appLogoPath\":null"));
    EXPECT_THAT(body.toStdString(), testing::HasSubstr("\"View.Style:backgroundImagePath\":null"));
}

TEST_F(Init, It_follows_exactly_five_events)
{
    connector->init();
    QSet<int> followed;
    for (int code = -10; code < 1000; ++code) {
        const auto listeners = host.notifier().notify(Event(code));
        EXPECT_LE(listeners, 1);
        if (listeners == 1)
            followed.insert(code);
    }
    EXPECT_EQ(followed, (QSet<int>{261, 184, 117, 103, 266}));
}

TEST_F(Init, Events_of_the_host_reach_it)
{
    connector->init();
    connector->takeSent();
    host.notifier().notify(Event(266, {{"sum", 1}}));
    EXPECT_EQ(connector->takeSent(), QList{view::Message(Type::PaymentDraft, {{"sum", 1}})});
}

TEST_F(Init, The_server_listens_on_the_port_of_the_settings)
{
    int port = 0;
    {
        const HttpServer free(0, HttpServerOptions());
        port = free.port();
    }
    host.config().setValue("ViewConnector:port", port);
    connector->init();
    EXPECT_EQ(connector->server->port(), port);
}

TEST_F(Init, Without_settings_the_server_listens_on_38081)
{
    host.config().setValue("ViewConnector:port", QVariant());
    const auto address = support::ownLoopbackAddress(); // nobody else has that port there
    host.config().setValue("HttpServer:address", address);
    connector->init();
    EXPECT_TRUE(connector->server->isListening());
    EXPECT_EQ(connector->server->port(), 38081);
    EXPECT_EQ(linesOf("httpserver"), QStringList{"HTTP-сервер: открыт " + address + ":38081"});
}

TEST_F(Init, Every_link_is_made_once)
{
    connector->init();
    EXPECT_EQ(connector->receivers(SIGNAL(hasMessage())), 1);
    EXPECT_EQ(receiversOf(connector->clientThread, SIGNAL(started())), 1);
    EXPECT_EQ(receiversOf(connector->clientThread, SIGNAL(finished())), 1);
    EXPECT_EQ(
        receiversOf(connector->server.data(), SIGNAL(requestReceived(RequestHeader, QByteArray))),
        1);
}

TEST_F(Init, The_client_gets_the_plugins_queue)
{
    connector->init();
    const auto &client = *connector->client;
    EXPECT_EQ(client.*(&ProbedClient::messages), connector->messages);
}

TEST_F(Init, The_client_is_started_in_its_thread_and_reads_its_settings_there)
{
    host.config().setValue("ViewConnector:server", "http://display.example:81");
    connector->init();
    ASSERT_TRUE(waitUntilAllSent());
    EXPECT_EQ(rest->posts().constFirst().url, QUrl("http://display.example:81/configure"));
    EXPECT_EQ(rest->loggerSet(), connector->logger);
    EXPECT_EQ(linesOf("viewconnector"),
              (QStringList{"Установка адреса сервера: http://display.example:81",
                           "Установка таймаута обращения к серверу: 1 с.",
                           "Установка интервала отправки сообщений: 1 мс."}));
}

TEST_F(Init, Images_are_followed_only_if_they_are_to_be_shown)
{
    const std::pair<QVariant, int> rows[] = {{QVariant(), 0}, {false, 0}, {0, 0},     {"false", 0},
                                             {true, 1},       {1, 1},     {"true", 1}};
    for (const auto &[showImages, followers] : rows) {
        host.config().setValue("View.Style:showImages", showImages);
        RecordingConnector fresh;
        fresh.init();
        EXPECT_EQ(images->followers(), followers) << showImages.toString().toStdString();
    }
}

TEST_F(Init, The_store_of_pictures_is_not_made_if_none_are_to_be_shown)
{
    Singleton<ImageDao>::replace(nullptr);
    RecordingConnector fresh;
    fresh.init();
    EXPECT_EQ(Singleton<ImageDao>::replace(nullptr), nullptr);
}

TEST_F(Init, A_loaded_image_is_brought_to_the_plugin)
{
    const Image image(ImageId(ImageId::GoodsCode, "100"), "content");
    host.config().setValue("View.Style:showImages", true);
    connector->init();
    connector->addAwaitingLoadImage(image, image);
    connector->takeSent();
    Q_EMIT images->imageLoaded(image);
    EXPECT_EQ(connector->takeSent().size(), 1);
    EXPECT_EQ(images->followers(), 1);
    connector.reset();
    EXPECT_EQ(images->followers(), 0);
}

} // namespace
