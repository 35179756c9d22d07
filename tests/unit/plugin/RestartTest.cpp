// A plug-in that is started again after its end, with a display behind a real port.

#include "PluginFixture.h"

#include "HttpRequest.h"

#include <support/RecordingDisplay.h>

namespace {

class ProbedImageDao : public ImageDao
{
public:
    int followers() const { return receivers(SIGNAL(imageLoaded(Image))); }
};

class Restart : public testing::Test
{
protected:
    using Type = view::Message::Type;

    Restart()
    {
        auto probed = std::make_unique<ProbedImageDao>();
        images = probed.get();
        Singleton<ImageDao>::replace(std::move(probed));
        host.config().setValue("ViewConnector:port", 0);
        host.config().setValue("ViewConnector:server", display.url());
        host.config().setValue("ViewConnector:interval", 1);
        host.config().setValue("View.Style:showImages", true);
    }

    void restart()
    {
        host.config().setValue("ViewConnector:port", connector.server->port());
        connector.deinit();
        connector.init();
    }

    bool waitUntilAllSent()
    {
        return support::waitFor([this] { return connector.messages->lock()->isEmpty(); });
    }

    support::LogCapture log;
    support::FreshSingletons host;
    ProbedImageDao *images = nullptr;
    support::RecordingDisplay display;
    ProbedConnector connector;
};

TEST_F(Restart, The_configuration_is_sent_once_for_each_start)
{
    connector.init();
    ASSERT_TRUE(waitUntilAllSent());
    EXPECT_EQ(display.paths(), QStringList{"/configure"});
    restart();
    ASSERT_TRUE(waitUntilAllSent());
    EXPECT_EQ(display.paths(), (QStringList{"/configure", "/configure"}));
}

TEST_F(Restart, The_configuration_is_read_anew)
{
    connector.init();
    ASSERT_TRUE(waitUntilAllSent());
    host.config().setValue("View.Style:headerHeight", 99);
    restart();
    ASSERT_TRUE(waitUntilAllSent());
    EXPECT_EQ(display.requests().constLast().body["View.Style:headerHeight"], 99);
}

TEST_F(Restart, Each_message_is_delivered_once)
{
    connector.init();
    restart();
    restart();
    ASSERT_TRUE(waitUntilAllSent());
    const auto before = display.requests().size();
    for (int number = 0; number < 5; ++number)
        connector.addMessage({Type::ImageData, {{"number", number}}});
    ASSERT_TRUE(waitUntilAllSent());

    const auto requests = display.requests().mid(before);
    ASSERT_EQ(requests.size(), 5);
    for (int number = 0; number < 5; ++number)
        EXPECT_EQ(requests[number].body["number"], number);
}

TEST_F(Restart, No_link_is_doubled)
{
    connector.init();
    restart();
    restart();
    EXPECT_EQ(connector.receivers(SIGNAL(hasMessage())), 1);
    EXPECT_EQ(receiversOf(connector.clientThread, SIGNAL(started())), 1);
    EXPECT_EQ(receiversOf(connector.clientThread, SIGNAL(finished())), 1);
    EXPECT_EQ(images->followers(), 1);
    EXPECT_EQ(connector.triggers().size(), 3);
    EXPECT_EQ(host.notifier().notify(Event(103)), 1);
}

TEST_F(Restart, The_client_is_not_started_twice)
{
    connector.init();
    ASSERT_TRUE(waitUntilAllSent());
    restart();
    ASSERT_TRUE(waitUntilAllSent());
    EXPECT_EQ(log.textsOf("viewconnector").filter("Установка адреса сервера").size(), 1);
}

TEST_F(Restart, A_plugin_that_ends_before_its_thread_ran_can_be_started_again)
{
    host.config().setValue("ViewConnector:port", 0);
    for (int round = 0; round < 50; ++round) { // the end comes first in some of them
        ProbedConnector hasty;
        hasty.init();
        hasty.deinit();
        hasty.init();
        hasty.addMessage({Type::Content, {{"round", round}}});
        ASSERT_TRUE(support::waitFor([&] { return hasty.messages->lock()->isEmpty(); }));
        EXPECT_EQ(display.requests().constLast().body["round"], round);
    }
}

TEST_F(Restart, The_server_is_reachable_again_on_the_same_port)
{
    connector.init();
    const int port = connector.server->port();
    ASSERT_NE(port, 0);
    restart();
    EXPECT_EQ(connector.server->port(), port);
    EXPECT_EQ(post(port, "{}").status, 200);
    EXPECT_EQ(log.textsOf("viewconnector").filter("Получено сообщение").size(), 1);
}

TEST_F(Restart, A_second_start_without_an_end_keeps_one_server_and_single_links)
{
    connector.init();
    const QWeakPointer<HttpServer> first = connector.server;
    host.config().setValue("ViewConnector:port", connector.server->port());
    connector.init();
    EXPECT_TRUE(first.isNull());
    EXPECT_TRUE(connector.server->isListening());
    EXPECT_EQ(connector.receivers(SIGNAL(hasMessage())), 1);
    EXPECT_EQ(images->followers(), 1);
}

TEST_F(Restart, A_message_queued_between_end_and_start_is_sent_after_the_start)
{
    connector.init();
    ASSERT_TRUE(waitUntilAllSent());
    connector.deinit();
    connector.addMessage({Type::Content, {{"hide", true}}});
    host.config().setValue("ViewConnector:port", 0);
    connector.init();
    ASSERT_TRUE(waitUntilAllSent());
    EXPECT_TRUE(display.paths().contains("/content"));
}

TEST_F(Restart, The_timetable_is_played_from_its_first_advertisement_again)
{
    host.config().setValue("View.ADTimetable.a:index", 1);
    host.config().setValue("View.ADTimetable.b:index", 2);
    connector.init();
    connector.processAdResult({{"value", true}});
    ASSERT_EQ(connector.currentAd, 1);
    restart();
    EXPECT_EQ(connector.currentAd, 0);
    EXPECT_EQ(connector.adTimetable.size(), 2);
}

} // namespace
