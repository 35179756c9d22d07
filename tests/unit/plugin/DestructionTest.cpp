// The end of the plug-in object. That nothing leaks is seen by the weak pointers here, and by a
// leak checker.

#include "PluginFixture.h"

#include <QElapsedTimer>
#include <QPointer>

#include <thread>

namespace {

using namespace std::chrono_literals;

class Destruction : public PluginFixture
{
protected:
    Destruction()
        : client(connector->client), queue(connector->messages), thread(connector->clientThread)
    {
    }

    /// Destroys the plug-in and returns how long that took.
    std::chrono::milliseconds destroy()
    {
        QElapsedTimer timer;
        timer.start();
        connector.reset();
        return std::chrono::milliseconds(timer.elapsed());
    }

    /// A plug-in whose client is in the middle of a post.
    void startAndHangInPost()
    {
        rest->hold();
        connector->init();
        ASSERT_TRUE(support::waitFor([this] { return rest->postCount() == 1; }));
    }

    const QWeakPointer<view::Client> client;
    const QWeakPointer<Locker<view::Messages, QMutex>> queue;
    const QPointer<QThread> thread;
};

TEST_F(Destruction, A_plugin_that_was_never_started_leaves_nothing)
{
    EXPECT_LT(destroy(), 500ms);
    EXPECT_TRUE(client.isNull());
    EXPECT_TRUE(queue.isNull());
    EXPECT_TRUE(thread.isNull());
}

TEST_F(Destruction, A_started_plugin_leaves_nothing_and_needs_no_waiting)
{
    connector->init();
    EXPECT_LT(destroy(), 500ms);
    EXPECT_TRUE(client.isNull());
    EXPECT_TRUE(queue.isNull());
    EXPECT_TRUE(thread.isNull());
}

TEST_F(Destruction, After_the_end_of_its_work_it_leaves_nothing_either)
{
    connector->init();
    connector->deinit();
    EXPECT_LT(destroy(), 500ms);
    EXPECT_TRUE(client.isNull());
    EXPECT_TRUE(queue.isNull());
    EXPECT_TRUE(thread.isNull());
}

TEST_F(Destruction, A_thread_that_has_finished_before_leaves_nothing)
{
    connector->init();
    connector->clientThread->quit();
    ASSERT_TRUE(connector->clientThread->wait());
    EXPECT_LT(destroy(), 500ms);
    EXPECT_TRUE(client.isNull());
    EXPECT_TRUE(queue.isNull());
    EXPECT_TRUE(thread.isNull());
}

TEST_F(Destruction, The_client_is_destroyed_in_its_own_thread)
{
    connector->init();
    const QThread *const own = connector->clientThread;
    const QThread *destroyedOn = nullptr;
    QObject::connect(
        connector->client.data(), &QObject::destroyed, connector->client.data(),
        [&] { destroyedOn = QThread::currentThread(); }, Qt::DirectConnection);
    destroy();
    EXPECT_EQ(destroyedOn, own);
}

TEST_F(Destruction, The_server_closes_its_port)
{
    connector->init();
    const int port = connector->server->port();
    destroy();
    const HttpServer another(port, HttpServerOptions());
    EXPECT_TRUE(another.isListening());
}

TEST_F(Destruction, Events_and_images_of_the_host_no_longer_reach_it)
{
    host.config().setValue("View.Style:showImages", true);
    connector->init();
    destroy();
    EXPECT_EQ(host.notifier().notify(Event(261)), 0);
    host.images().store(Image(ImageId(ImageId::GoodsCode, "1"), "content"));
}

TEST_F(Destruction, A_post_that_ends_in_time_is_waited_for)
{
    startAndHangInPost();
    std::thread display([this] {
        std::this_thread::sleep_for(200ms);
        rest->release();
    });
    const auto took = destroy();
    display.join();
    EXPECT_GE(took, 150ms);
    EXPECT_LT(took, 1000ms);
    EXPECT_TRUE(client.isNull());
    EXPECT_TRUE(thread.isNull());
}

TEST_F(Destruction, During_a_hanging_post_it_returns_after_a_second_and_the_thread_ends_by_itself)
{
    startAndHangInPost();
    const auto took = destroy();
    EXPECT_GE(took, 940ms); // a coarse deadline of 1000 ms
    EXPECT_LT(took, 2500ms);

    ASSERT_FALSE(thread.isNull()); // the process goes on, with the thread
    EXPECT_TRUE(thread->isRunning());
    EXPECT_EQ(thread->parent(), nullptr);
    EXPECT_FALSE(client.isNull());

    rest->release();
    EXPECT_TRUE(support::waitFor([this] { return thread.isNull(); }));
    EXPECT_TRUE(client.isNull());
    EXPECT_TRUE(queue.isNull());
    EXPECT_EQ(rest->postCount(), 1);
}

TEST_F(Destruction, After_a_hanging_post_no_other_message_is_sent)
{
    startAndHangInPost();
    connector->addMessage({Type::Content, {}});
    destroy();
    rest->release();
    ASSERT_TRUE(support::waitFor([this] { return thread.isNull(); }));
    EXPECT_EQ(rest->paths(), QStringList{"/configure"});
}

TEST_F(Destruction, Another_plugin_can_start_beside_the_hanging_thread)
{
    startAndHangInPost();
    destroy();
    const support::InjectedRestClient free;
    connector = std::make_unique<RecordingConnector>();
    connector->init();
    EXPECT_TRUE(waitUntilAllSent());
    EXPECT_EQ(free->paths(), QStringList{"/configure"});

    rest->release();
    EXPECT_TRUE(support::waitFor([this] { return thread.isNull(); }));
}

TEST_F(Destruction, It_logs_nothing)
{
    connector->init();
    ASSERT_TRUE(waitUntilAllSent());
    const auto before = log.lines().size();
    destroy();
    EXPECT_EQ(log.lines().size(), before);
}

} // namespace
