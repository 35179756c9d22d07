#include "RecordingListener.h"

#include <ActivityNotifier.h>

#include <support/PrintQt.h>
#include <support/Wait.h>

#include <QCoreApplication>
#include <QThread>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

class ActingListener : public BaseActivityListener
{
public:
    explicit ActingListener(std::function<void()> action) : m_action(std::move(action)) {}
    void handleEvent(const Event &) override { m_action(); }

private:
    std::function<void()> m_action;
};

} // namespace

TEST(ActivityNotifier, Has_delivered_to_a_listener_of_this_thread_when_notify_returns)
{
    ActivityNotifier notifier;
    RecordingListener listener;
    notifier.subscribe(&listener, {117});

    EXPECT_EQ(notifier.notify(Event(117, {{QStringLiteral("amount"), 5}})), 1);
    ASSERT_EQ(listener.arrivals().size(), 1);
    const auto arrival = listener.arrivals().first();
    EXPECT_EQ(arrival.event.getCode(), 117);
    EXPECT_EQ(arrival.event.value(QStringLiteral("amount"), 0), QVariant(5));
    EXPECT_EQ(arrival.thread, QThread::currentThread());

    QCoreApplication::processEvents();
    EXPECT_EQ(listener.codes(), QList<int>{117}); // and not once more through the slot
}

TEST(ActivityNotifier, Delivers_through_the_slot_to_a_listener_of_another_thread)
{
    ActivityNotifier notifier;
    QThread thread;
    RecordingListener listener;
    listener.moveToThread(&thread);
    notifier.subscribe(&listener, {117, 103});

    EXPECT_EQ(notifier.notify(Event(117)), 1);
    EXPECT_EQ(notifier.notify(Event(103)), 1);
    EXPECT_EQ(listener.codes(), QList<int>()); // its thread has not begun

    thread.start();
    EXPECT_TRUE(support::waitFor([&] { return listener.codes().size() == 2; }));
    EXPECT_EQ(listener.codes(), (QList<int>{117, 103}));
    for (const auto &arrival : listener.arrivals())
        EXPECT_EQ(arrival.thread, &thread);
    thread.quit();
    thread.wait();
}

TEST(ActivityNotifier, Delivers_only_the_subscribed_codes)
{
    ActivityNotifier notifier;
    RecordingListener listener;
    notifier.subscribe(&listener, {261, 184});
    for (const int code : {117, 261, 0, 184, 26})
        notifier.notify(Event(code));
    EXPECT_EQ(listener.codes(), (QList<int>{261, 184}));
}

TEST(ActivityNotifier, Counts_the_listeners_of_a_code)
{
    ActivityNotifier notifier;
    RecordingListener first;
    RecordingListener second;
    notifier.subscribe(&first, {1, 2});
    notifier.subscribe(&second, {2});
    EXPECT_EQ(notifier.notify(Event(0)), 0);
    EXPECT_EQ(notifier.notify(Event(1)), 1);
    EXPECT_EQ(notifier.notify(Event(2)), 2);
}

TEST(ActivityNotifier, Does_not_double_a_repeated_subscription)
{
    ActivityNotifier notifier;
    RecordingListener listener;
    notifier.subscribe(&listener, {117});
    notifier.subscribe(&listener, {117, 103});
    EXPECT_EQ(notifier.notify(Event(117)), 1);
    EXPECT_EQ(notifier.notify(Event(103)), 1);
    EXPECT_EQ(listener.codes(), (QList<int>{117, 103}));
}

TEST(ActivityNotifier, Drops_a_destroyed_listener)
{
    ActivityNotifier notifier;
    auto leaving = std::make_unique<RecordingListener>();
    RecordingListener staying;
    notifier.subscribe(leaving.get(), {117});
    notifier.subscribe(&staying, {117});
    leaving.reset();
    EXPECT_EQ(notifier.notify(Event(117)), 1);
    EXPECT_EQ(staying.codes(), QList<int>{117});
}

TEST(ActivityNotifier, Drops_a_listener_that_an_earlier_one_destroys)
{
    ActivityNotifier notifier;
    auto victim = std::make_unique<RecordingListener>();
    ActingListener first([&] { victim.reset(); });
    notifier.subscribe(&first, {117});
    notifier.subscribe(victim.get(), {117});
    EXPECT_EQ(notifier.notify(Event(117)), 1);
    EXPECT_EQ(victim, nullptr);
}

TEST(ActivityNotifier, Delivers_in_the_order_of_subscription)
{
    ActivityNotifier notifier;
    QList<int> order;
    ActingListener first([&] { order.append(1); });
    ActingListener second([&] { order.append(2); });
    ActingListener third([&] { order.append(3); });
    notifier.subscribe(&second, {117});
    notifier.subscribe(&third, {117});
    notifier.subscribe(&first, {117});
    notifier.notify(Event(117));
    EXPECT_EQ(order, (QList<int>{2, 3, 1}));
}

TEST(ActivityNotifier, Lets_a_listener_subscribe_another_while_it_handles_an_event)
{
    ActivityNotifier notifier;
    RecordingListener late;
    ActingListener first([&] { notifier.subscribe(&late, {117}); });
    notifier.subscribe(&first, {117});
    EXPECT_EQ(notifier.notify(Event(117)), 1);
    EXPECT_EQ(late.codes(), QList<int>());
    EXPECT_EQ(notifier.notify(Event(117)), 2);
    EXPECT_EQ(late.codes(), QList<int>{117});
}

TEST(ActivityNotifier, Lets_what_a_listener_throws_reach_the_caller)
{
    ActivityNotifier notifier;
    ActingListener listener([] { throw std::runtime_error("no paper"); });
    notifier.subscribe(&listener, {117});
    EXPECT_THROW(notifier.notify(Event(117)), std::runtime_error);
    EXPECT_THROW(notifier.notify(Event(117)), std::runtime_error); // and holds no lock after it
}

TEST(ActivityNotifier, Loses_no_event_of_several_threads)
{
    constexpr int threadCount = 4;
    constexpr int rounds = 200;
    ActivityNotifier notifier;
    RecordingListener listener;
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back([&, i] {
            for (int round = 0; round < rounds; ++round) {
                notifier.subscribe(&listener, {i});
                notifier.notify(Event(i));
            }
        });
    for (auto &thread : threads)
        thread.join();

    EXPECT_TRUE(support::waitFor(
        [&] { return listener.codes().size() == qsizetype{threadCount} * rounds; }));
    for (int i = 0; i < threadCount; ++i)
        EXPECT_EQ(listener.codes().count(i), rounds);
}
