#include "RunningPlugin.h"

#include <support/ContextSwitches.h>

#include <QThread>

#include <unistd.h>

using namespace std::chrono_literals;
using Type = view::Message::Type;

namespace {

/// Of the plug-in's threads, and of the display's, which are quiet as long as nothing comes.
qint64 allSwitches()
{
    return support::contextSwitchesOfOtherThreads().all();
}

class Idle : public RunningPlugin
{
protected:
    void deliver(int number)
    {
        const auto before = display.requestCount();
        plugin->addMessage(numbered(Type::Content, number));
        ASSERT_TRUE(waitForRequests(before + 1));
        settle();
    }

    /// Lets the pause after a message pass, and whatever a burdened machine still has to do.
    static void settle()
    {
        qint64 before = 0;
        EXPECT_TRUE(support::waitFor([&] {
            before = allSwitches();
            support::letPass(2 * interval);
            return allSwitches() == before;
        }));
    }

    pid_t deliveryThread() const
    {
        pid_t id = 0;
        QObject there;
        there.moveToThread(plugin->findChild<QThread *>());
        QMetaObject::invokeMethod(
            &there, [&] { id = ::gettid(); }, Qt::BlockingQueuedConnection);
        return id;
    }
};

} // namespace

TEST_F(Idle, No_thread_of_the_plug_in_wakes_while_nothing_happens)
{
    ASSERT_TRUE(waitForRequests(1)); // the configuration
    settle();
    deliver(1);
    ASSERT_EQ(display.connectionCount(), 1); // which is still open

    const auto before = allSwitches();
    support::letPass(1500ms);
    EXPECT_EQ(allSwitches(), before);

    deliver(2); // something happens, which is seen
    EXPECT_GT(allSwitches(), before);
}

TEST_F(Idle, A_change_wakes_the_delivery_thread_only_a_few_times)
{
    ASSERT_TRUE(waitForRequests(1)); // the configuration
    settle();
    const auto thread = deliveryThread();
    deliver(0);

    constexpr int changes = 10;
    const auto before = support::contextSwitchesOf(thread);
    for (int i = 1; i <= changes; ++i)
        deliver(i);
    const auto wakeUps =
        static_cast<double>(support::contextSwitchesOf(thread).toWait - before.toWait) / changes;
    RecordProperty("wakeUpsForEachChange", std::to_string(wakeUps));
    EXPECT_GE(wakeUps, 1);
    EXPECT_LE(wakeUps, 5); // for the change, the answer and the end of the pause; seldom for a lock
}
