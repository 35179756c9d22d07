// The end of the plug-in's work.

#include "PluginFixture.h"

#include "../view/ProbedClient.h"

#include "HttpRequest.h"

namespace {

class Deinit : public PluginFixture
{
protected:
    QTimer *timer() const { return *connector->client.*(&ProbedClient::timer); }

    /// Whether the client waits for nothing, as seen on its thread.
    bool isClientIdle() const
    {
        bool idle = false;
        QMetaObject::invokeMethod(
            connector->client.data(), [&] { idle = !timer()->isActive(); },
            Qt::BlockingQueuedConnection);
        return idle;
    }

    void startAndSendAll()
    {
        connector->init();
        ASSERT_TRUE(waitUntilAllSent());
        ASSERT_TRUE(support::waitFor([this] { return isClientIdle(); }));
    }
};

TEST_F(Deinit, It_returns_what_the_base_returns_and_lets_the_base_drop_the_triggers)
{
    connector->init();
    EXPECT_EQ(connector->triggers().size(), 3);
    EXPECT_TRUE(connector->deinit());
    EXPECT_TRUE(connector->triggers().isEmpty());
}

TEST_F(Deinit, It_empties_the_queue_of_all_types)
{
    rest->answer({7}); // nothing leaves the queue by itself
    connector->init();
    for (int type = 0; type < 8; ++type)
        connector->addMessage({static_cast<Type>(type), {}});
    connector->addMessage({Type::ImageData, {}});
    connector->deinit();
    EXPECT_TRUE(isQueueEmpty());
}

TEST_F(Deinit, Later_messages_no_longer_wake_the_client)
{
    startAndSendAll();
    connector->deinit();
    const auto before = rest->postCount();
    connector->addMessage({Type::Content, {}});
    flushClientThread();
    EXPECT_EQ(rest->postCount(), before);
    EXPECT_FALSE(isQueueEmpty());
}

TEST_F(Deinit, Before_it_messages_do_wake_the_client)
{
    startAndSendAll();
    const auto before = rest->postCount();
    connector->addMessage({Type::Content, {}});
    flushClientThread();
    EXPECT_EQ(rest->postCount(), before + 1);
}

TEST_F(Deinit, It_cuts_all_links_but_the_one_that_stops_the_client)
{
    connector->init();
    connector->deinit();
    EXPECT_EQ(connector->receivers(SIGNAL(hasMessage())), 0);
    EXPECT_EQ(receiversOf(connector->clientThread, SIGNAL(started())), 0);
    EXPECT_EQ(receiversOf(connector->clientThread, SIGNAL(finished())), 1);
    EXPECT_EQ(
        receiversOf(connector->server.data(), SIGNAL(requestReceived(RequestHeader, QByteArray))),
        0);
}

TEST_F(Deinit, Only_the_plugins_own_links_are_cut)
{
    connector->init();
    int announced = 0;
    QObject::connect(connector.get(), &ViewConnector::hasMessage, connector.get(),
                     [&] { ++announced; });
    connector->deinit();
    connector->addMessage({Type::Content, {}});
    EXPECT_EQ(announced, 1);
}

TEST_F(Deinit, The_client_stops_when_its_thread_finishes)
{
    host.config().setValue("ViewConnector:interval", 60'000);
    connector->init();
    ASSERT_TRUE(waitUntilAllSent());
    connector->deinit();
    EXPECT_FALSE(isClientIdle());
    connector->clientThread->quit();
    ASSERT_TRUE(connector->clientThread->wait());
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(Deinit, It_does_not_wait_for_a_post_under_way)
{
    rest->hold();
    connector->init();
    ASSERT_TRUE(support::waitFor([this] { return rest->postCount() == 1; }));
    connector->deinit(); // would hang, did it wait
    EXPECT_TRUE(isQueueEmpty());
    rest->release();
    flushClientThread();
    EXPECT_TRUE(isQueueEmpty());
    EXPECT_EQ(rest->postCount(), 1);
}

TEST_F(Deinit, The_thread_goes_on)
{
    connector->init();
    connector->deinit();
    EXPECT_TRUE(connector->clientThread->isRunning());
}

TEST_F(Deinit, The_server_goes_on_and_answers_that_nobody_is_there)
{
    startAndSendAll();
    connector->deinit();
    ASSERT_TRUE(connector->server->isListening());
    EXPECT_EQ(post(connector->server->port(), "{}").status, 503);
    EXPECT_FALSE(log.textsOf("viewconnector").contains("Получено сообщение"));
}

TEST_F(Deinit, Without_a_start_it_only_empties_the_queue)
{
    connector->addMessage({Type::Content, {}});
    EXPECT_TRUE(connector->deinit());
    EXPECT_TRUE(isQueueEmpty());
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(Deinit, Twice_is_as_good_as_once)
{
    connector->init();
    EXPECT_TRUE(connector->deinit());
    EXPECT_TRUE(connector->deinit());
    EXPECT_EQ(receiversOf(connector->clientThread, SIGNAL(finished())), 1);
}

TEST_F(Deinit, Open_dialogs_are_left_alone)
{
    connector->init();
    connector->dialogTypes = {{7, Type::QrPayment}};
    connector->deinit();
    EXPECT_EQ(connector->dialogTypes, (QMap<int, Type>{{7, Type::QrPayment}}));
    connector->init();
    EXPECT_EQ(connector->dialogTypes, (QMap<int, Type>{{7, Type::QrPayment}}));
}

TEST_F(Deinit, Pictures_that_are_awaited_or_were_sent_stay_so_also_over_another_start)
{
    const ImageId sent(ImageId::GoodsCode, "100");
    const ImageId awaited(ImageId::GoodsCode, "101");
    connector->init();
    connector->sendImage(sent, "");
    connector->addAwaitingLoadImage(awaited, sent);
    connector->deinit();
    connector->init();
    EXPECT_EQ(connector->sentImages, QSet{sent});
    EXPECT_TRUE(connector->isAwaitingLoadImage(awaited));
}

TEST_F(Deinit, Events_are_still_translated)
{
    connector->init();
    connector->deinit();
    connector->takeSent();
    EXPECT_EQ(host.notifier().notify(Event(266, {{"sum", 1}})), 1);
    EXPECT_EQ(connector->takeSent(), QList{view::Message(Type::PaymentDraft, {{"sum", 1}})});
}

} // namespace
