// What the host throws while the plug-in calls it. In a call of the host's it reaches the host, and
// the plug-in stays as it was; from the event loop or the client thread it reaches nobody.

#include "ImagesFixture.h"

#include "HttpRequest.h"

#include <support/Unreadable.h>

#include <BasicDocument.h>
#include <Tr.h>

#include <QJsonDocument>

#include <atomic>
#include <stdexcept>

namespace {

class ThrowingDocument : public BasicDocument
{
    Q_OBJECT
    Q_PROPERTY(int sum READ sum)

public:
    bool isBroken = true;

    int sum() const
    {
        if (isBroken)
            throw std::runtime_error("the sum is not known");
        return 5;
    }
};

class ThrowingImageDao : public ImageDao
{
public:
    QSharedPointer<Image> findImage(const ImageId &id) const override
    {
        if (isBroken)
            throw std::runtime_error("the store is not there");
        return ImageDao::findImage(id);
    }

    bool isBroken = true;
};

class ThrowingHttpServer : public HttpServer
{
public:
    using HttpServer::HttpServer;
    void sendResponse(const ResponseHeader &, const QByteArray &) override
    {
        throw std::runtime_error("the server does not answer");
    }
};

class HostExceptions : public ImagesFixture
{
protected:
    /// The plug-in works: it sends what comes, answers the display, ends and starts again.
    void expectToWork()
    {
        ASSERT_TRUE(waitUntilAllSent());
        connector->takeSent();
        EXPECT_EQ(host.notifier().notify(Event(266, {{"sum", 1}})), 1);
        EXPECT_EQ(connector->takeSent(), QList{view::Message(Type::PaymentDraft, {{"sum", 1}})});
        EXPECT_TRUE(waitUntilAllSent());
        EXPECT_EQ(rest->posts().constLast().body, R"({"sum":1})");
        EXPECT_EQ(post(connector->server->port(), "{}").status, 200);
        EXPECT_TRUE(connector->deinit());
        EXPECT_TRUE(connector->init());
        EXPECT_EQ(connector->triggers().size(), 3);
        EXPECT_TRUE(waitUntilAllSent());
    }
};

TEST_F(HostExceptions, Of_a_setting_read_at_the_start_reach_the_host_which_may_start_it_again)
{
    for (const auto *key : {"ViewConnector:port", "ViewConnector.Ads:url",
                            "View.ADTimetable.one:index", "View.ADTimetable.one:time"}) {
        connector = std::make_unique<RecordingConnector>();
        host.config().setValue("ViewConnector:port", 0);
        host.config().setValue(key, support::Unreadable::value());
        EXPECT_THROW(connector->init(), std::runtime_error) << key;
        EXPECT_TRUE(connector->deinit()) << key;

        host.config().setValue(key, QVariant());
        host.config().setValue("ViewConnector:port", 0);
        EXPECT_TRUE(connector->init()) << key;
        expectToWork();
    }
}

TEST_F(HostExceptions, At_the_start_leave_a_plugin_that_can_be_destroyed)
{
    const QWeakPointer<view::Client> client = connector->client;
    host.config().setValue("ViewConnector.Ads:url", support::Unreadable::value());
    EXPECT_THROW(connector->init(), std::runtime_error);
    connector.reset();
    EXPECT_TRUE(client.isNull());
}

TEST_F(HostExceptions, Of_a_new_document_reach_the_host_and_the_document_is_followed)
{
    connector->init();
    const auto document = QSharedPointer<ThrowingDocument>::create();
    connector->sentImages = {code};
    EXPECT_THROW(connector->setDocument(document), std::runtime_error);
    EXPECT_EQ(connector->document(), document);
    EXPECT_TRUE(connector->sentImages.isEmpty());

    const auto triggers = connector->triggers();
    EXPECT_THROW(triggers.constFirst().run({}), std::runtime_error);
    document->isBroken = false;
    connector->takeSent();
    EXPECT_EQ(triggers.constFirst().run({}), EContext::Continue);
    EXPECT_EQ(connector->takeSent(), QList{view::Message(Type::UpdateDocument, {{"sum", 5}})});
    expectToWork();
}

TEST_F(HostExceptions, Of_an_events_arguments_reach_whoever_notifies)
{
    connector->init();
    const auto value = support::Unreadable::value();
    for (const auto &event :
         {Event(261, {{"type", value}}), Event(261, {{"typeName", value}}),
          Event(184, {{"dialogId", value}}), Event(184, {{"amount", value}}),
          Event(117, {{"scroll", value}}), Event(117, {{"data", value}}),
          Event(117, {{"data", 1}, {"columns", value}}), Event(103, {{"dialogId", value}})}) {
        connector->takeSent();
        EXPECT_THROW(host.notifier().notify(event), std::runtime_error) << event.getCode();
        EXPECT_TRUE(connector->takeSent().isEmpty()) << event.getCode();
    }
    expectToWork();
}

TEST_F(HostExceptions, Of_a_dialogs_arguments_leave_it_closed_as_the_display_does_not_show_it)
{
    connector->init();
    const auto value = support::Unreadable::value();
    for (const auto &event : {Event(184, {{"dialogId", 7}, {"qrCode", value}}),
                              Event(117, {{"dialogId", 7}, {"data", value}})}) {
        EXPECT_THROW(host.notifier().notify(event), std::runtime_error);
        EXPECT_TRUE(connector->dialogTypes.isEmpty()) << event.getCode();
    }
}

TEST_F(HostExceptions, Of_the_language_of_a_text_reach_whoever_notifies)
{
    connector->init();
    host.config().setValue("Host:language", support::Unreadable::value());
    const tr::Tr title({{"ru", "Цены"}});
    const Event event(117, {{"dialogId", 7}, {"data", 1}, {"title", QVariant::fromValue(title)}});
    EXPECT_THROW(host.notifier().notify(event), std::runtime_error);
    EXPECT_TRUE(connector->dialogTypes.isEmpty());
    expectToWork();
}

TEST_F(HostExceptions, Of_the_store_of_pictures_end_in_the_request_that_the_display_made)
{
    auto throwing = std::make_unique<ThrowingImageDao>();
    auto *const store = throwing.get();
    Singleton<ImageDao>::replace(std::move(throwing));
    connector->init();
    const auto request = QJsonDocument(requestFor(code, barcode)).toJson();
    EXPECT_EQ(post(connector->server->port(), request).status, 200);
    EXPECT_FALSE(connector->isAwaitingLoadImage(code));

    store->isBroken = false;
    know(code, png);
    connector->takeSent();
    EXPECT_EQ(post(connector->server->port(), request).status, 200);
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
    expectToWork();
}

TEST_F(HostExceptions, Of_the_server_end_in_the_request_that_the_display_made)
{
    connector->init();
    connector->server = QSharedPointer<ThrowingHttpServer>::create(0);
    connector->takeSent();
    const auto request = QJsonDocument(requestFor(code, barcode)).toJson();
    EXPECT_NO_THROW(connector->requestReceived({}, request));
    EXPECT_TRUE(connector->takeSent().isEmpty());
}

TEST_F(HostExceptions, Of_a_setting_read_for_a_result_end_in_that_result)
{
    connector->init();
    connector->adTimetable = {QVariantMap{{"url", QUrl("ads://host")}}};
    host.config().setValue("View.ADTimetable.one:index", support::Unreadable::value());
    EXPECT_EQ(post(connector->server->port(), R"({"name":"adResult","value":false})").status, 200);
    host.config().setValue("View.ADTimetable.one:index", QVariant());
    expectToWork();
}

TEST_F(HostExceptions, Of_the_REST_client_are_failed_posts)
{
    std::atomic<int> left = 3;
    rest->duringPost = [&](const auto &) {
        if (left-- > 0)
            throw std::runtime_error("no post today");
    };
    connector->init();
    ASSERT_TRUE(waitUntilAllSent());
    EXPECT_EQ(rest->paths(), (QStringList{"/configure", "/configure", "/configure", "/configure"}));
    expectToWork();
}

TEST_F(HostExceptions, Of_a_setting_read_on_the_client_thread_put_off_the_delivery)
{
    host.config().setValue("ViewConnector:server", support::Unreadable::value());
    connector->init();
    flushClientThread();
    EXPECT_FALSE(isQueueEmpty());
    host.config().setValue("ViewConnector:server", QVariant());
    expectToWork();
}

} // namespace

#include "HostExceptionsTest.moc"
