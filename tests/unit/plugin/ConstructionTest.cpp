// A plug-in that was constructed and not started.

#include "PluginFixture.h"

#include "../view/ProbedClient.h"

#include <log4qt/logmanager.h>

#include <QPointer>

namespace {

class Construction : public PluginFixture
{
};

TEST_F(Construction, The_members_have_their_initial_values)
{
    EXPECT_EQ(connector->ignoredProps, ProbedConnector::getDocumentIgnoredProps());
    EXPECT_NE(connector->client, nullptr);
    EXPECT_TRUE(isQueueEmpty());
    EXPECT_TRUE(connector->adTimetable.isEmpty());
    EXPECT_EQ(connector->currentAd, connector->adTimetable.size()); // at none
    EXPECT_EQ(connector->server, nullptr);
    EXPECT_TRUE(connector->dialogTypes.isEmpty());
    EXPECT_TRUE(connector->awaitingImages.lock()->isEmpty());
    EXPECT_TRUE(connector->sentImages.isEmpty());
    EXPECT_EQ(connector->logger, Log4Qt::LogManager::logger("viewconnector"));
}

TEST_F(Construction, The_thread_is_a_child_and_not_running)
{
    ASSERT_NE(connector->clientThread, nullptr);
    EXPECT_EQ(connector->clientThread->parent(), connector.get());
    EXPECT_FALSE(connector->clientThread->isRunning());
    EXPECT_FALSE(connector->clientThread->isFinished());
}

TEST_F(Construction, The_client_lives_in_the_thread_and_has_no_queue_yet)
{
    EXPECT_EQ(connector->client->thread(), connector->clientThread);
    const auto &client = *connector->client;
    EXPECT_EQ(client.*(&ProbedClient::messages), nullptr);
}

TEST_F(Construction, It_reads_no_setting_registers_nowhere_and_logs_nothing)
{
    // Nothing of the first use of a plug-in by the fixture either.
    EXPECT_TRUE(log.lines().isEmpty());
    EXPECT_TRUE(connector->triggers().isEmpty());
    EXPECT_EQ(host.notifier().notify(Event(104)), 0);
    EXPECT_EQ(host.notifier().notify(Event(261)), 0);
    EXPECT_EQ(rest->calls(), QStringList());
    EXPECT_TRUE(connector->sent.isEmpty());

    Singleton<Config>::replace(nullptr);
    Singleton<ImageDao>::replace(nullptr);
    const ViewConnector another;
    EXPECT_EQ(Singleton<Config>::replace(nullptr), nullptr) << "it was made to be read";
    EXPECT_EQ(Singleton<ImageDao>::replace(nullptr), nullptr);
}

TEST_F(Construction, Nothing_is_connected)
{
    EXPECT_EQ(connector->receivers(SIGNAL(hasMessage())), 0);
    EXPECT_EQ(receiversOf(connector->clientThread, SIGNAL(started())), 0);
    EXPECT_EQ(receiversOf(connector->clientThread, SIGNAL(finished())), 0);
}

TEST_F(Construction, Messages_may_be_queued_but_none_is_sent)
{
    connector->handleEvent(Event(266, {{"sum", 1}}));
    QCoreApplication::processEvents();
    EXPECT_EQ(rest->postCount(), 0);
    EXPECT_EQ(takeWaiting(), QList{view::Message(Type::PaymentDraft, {{"sum", 1}})});
}

TEST_F(Construction, What_was_queued_before_the_start_is_sent_after_the_configuration)
{
    connector->handleEvent(Event(266, {{"sum", 1}}));
    connector->init();
    ASSERT_TRUE(waitUntilAllSent());
    EXPECT_EQ(rest->paths(), (QStringList{"/configure", "/paymentdraft"}));
}

TEST_F(Construction, Each_queued_message_is_announced_once_and_can_be_read_by_then)
{
    int announced = 0;
    QObject::connect(connector.get(), &ViewConnector::hasMessage, connector.get(), [&] {
        ++announced;
        EXPECT_FALSE(isQueueEmpty()); // would hang, were the queue still locked
    });
    connector->addMessage({Type::Content, {}});
    connector->addMessage({Type::Content, {}});
    EXPECT_EQ(announced, 2);
    EXPECT_TRUE(log.lines().isEmpty());
}

} // namespace
