#include <Locker.h>
#include <view/Messages.h>

#include <QMutex>
#include <QSharedPointer>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

using Queue = Locker<view::Messages, QMutex>;
using Type = view::Message::Type;

constexpr int messageCount = 20'000;

view::Message numbered(Type type, int number)
{
    return {type, {{QStringLiteral("n"), number}, {QStringLiteral("list"), QVariantList{number}}}};
}

/// Takes messages as the client does: copies the first, works on it unlocked, removes it.
template <class Handler>
void consume(Queue &queue, const std::atomic<bool> &produced, Handler handle)
{
    while (true) {
        const bool last = produced;
        const auto message = queue.lock()->first();
        if (message) {
            handle(*message);
            queue.lock()->remove(message->type);
        } else if (last) {
            return;
        }
    }
}

} // namespace

TEST(Queue, Hands_every_picture_to_the_other_thread_once_and_in_order)
{
    const auto queue = QSharedPointer<Queue>::create();
    std::atomic<bool> produced = false;
    QList<int> received;
    std::thread consumer([&] {
        consume(*queue, produced,
                [&](const view::Message &message) { received += message.data["n"].toInt(); });
    });

    for (int i = 0; i < messageCount; ++i)
        queue->lock()->insert(numbered(Type::ImageData, i));
    produced = true;
    consumer.join();

    ASSERT_EQ(received.size(), messageCount);
    for (int i = 0; i < messageCount; ++i)
        ASSERT_EQ(received[i], i);
}

TEST(Queue, Hands_over_updates_in_ascending_order_while_they_are_replaced)
{
    Queue queue;
    std::atomic<bool> produced = false;
    QList<int> received;
    std::thread consumer([&] {
        consume(queue, produced,
                [&](const view::Message &message) { received += message.data["n"].toInt(); });
    });

    for (int i = 0; i < messageCount; ++i)
        queue.lock()->insert(numbered(Type::UpdateDocument, i));
    produced = true;
    consumer.join();

    ASSERT_FALSE(received.isEmpty());
    EXPECT_TRUE(std::is_sorted(received.begin(), received.end()));
    EXPECT_LE(received.size(), messageCount);
}

TEST(Queue, Can_be_cleared_while_the_other_thread_takes_from_it)
{
    Queue queue;
    std::atomic<bool> produced = false;
    std::thread consumer([&] { consume(queue, produced, [](const view::Message &) {}); });

    for (int i = 0; i < messageCount; ++i) {
        queue.lock()->insert(numbered(i % 2 == 0 ? Type::ImageData : Type::Content, i));
        if (i % 100 == 0)
            queue.lock()->clear();
    }
    produced = true;
    consumer.join();

    EXPECT_TRUE(queue.lock()->isEmpty());
}
