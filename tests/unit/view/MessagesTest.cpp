#include <view/Messages.h>

#include <Locker.h>

#include <gtest/gtest.h>

#include <support/PrintQt.h>

#include <QMutex>

#include <type_traits>
#include <utility>

namespace {

using view::Message;
using view::Messages;
using Type = Message::Type;

Message numbered(Type type, int number)
{
    return {type, {{"number", number}}};
}

constexpr Type allTypes[] = {Type::Configure, Type::UpdateDocument, Type::QrPayment,
                             Type::ShowAd,    Type::PriceList,      Type::ImageData,
                             Type::Content,   Type::PaymentDraft};

TEST(Messages, An_empty_queue_gives_nothing)
{
    Messages queue;
    EXPECT_EQ(queue.first(), std::nullopt);
    EXPECT_TRUE(queue.isEmpty());
    EXPECT_EQ(queue.count(), 0);
    static_assert(std::is_same_v<decltype(queue.count()), qsizetype>);
}

TEST(Messages, A_newer_update_replaces_the_one_still_waiting)
{
    Messages queue;
    for (int number = 1; number <= 3; ++number)
        queue.insert(numbered(Type::UpdateDocument, number));
    EXPECT_EQ(queue.count(), 1);
    EXPECT_EQ(queue.first(), numbered(Type::UpdateDocument, 3));

    queue.remove(Type::UpdateDocument);
    EXPECT_TRUE(queue.isEmpty());
    EXPECT_EQ(queue.first(), std::nullopt);
}

TEST(Messages, Of_every_type_but_pictures_only_the_newest_waits)
{
    for (const Type type : allTypes) {
        if (type == Type::ImageData)
            continue;
        SCOPED_TRACE(static_cast<int>(type));
        Messages queue;
        queue.insert(numbered(type, 1));
        queue.insert(numbered(type, 2));
        EXPECT_EQ(queue.first(), numbered(type, 2));
        queue.remove(type);
        EXPECT_TRUE(queue.isEmpty());
    }
}

TEST(Messages, Every_picture_waits_for_its_turn_in_the_order_of_arrival)
{
    Messages queue;
    for (int number = 1; number <= 3; ++number)
        queue.insert(numbered(Type::ImageData, number));
    for (int number = 1; number <= 3; ++number) {
        EXPECT_EQ(queue.count(), 1) << number;
        EXPECT_FALSE(queue.isEmpty());
        EXPECT_EQ(queue.first(), numbered(Type::ImageData, number));
        queue.remove(Type::ImageData);
    }
    EXPECT_TRUE(queue.isEmpty());
    EXPECT_EQ(queue.count(), 0);
}

TEST(Messages, Equal_pictures_are_all_kept)
{
    Messages queue;
    queue.insert(numbered(Type::ImageData, 1));
    queue.insert(numbered(Type::ImageData, 1));
    queue.remove(Type::ImageData);
    EXPECT_EQ(queue.first(), numbered(Type::ImageData, 1));
}

TEST(Messages, The_lowest_type_goes_first_whenever_it_came)
{
    Messages queue;
    queue.insert(numbered(Type::Content, 1));
    queue.insert(numbered(Type::Configure, 2));
    EXPECT_EQ(queue.first(), numbered(Type::Configure, 2));
}

TEST(Messages, All_types_come_out_in_the_order_of_their_values)
{
    Messages queue;
    for (auto type = std::rbegin(allTypes); type != std::rend(allTypes); ++type)
        queue.insert(numbered(*type, 0));
    EXPECT_EQ(queue.count(), 8);
    for (const Type type : allTypes) {
        ASSERT_TRUE(queue.first());
        EXPECT_EQ(queue.first()->type, type);
        queue.remove(type);
    }
    EXPECT_TRUE(queue.isEmpty());
}

TEST(Messages, A_replaced_message_keeps_the_turn_of_its_type)
{
    Messages queue;
    queue.insert(numbered(Type::QrPayment, 1));
    queue.insert(numbered(Type::PriceList, 1));
    queue.insert(numbered(Type::QrPayment, 2));
    EXPECT_EQ(queue.first(), numbered(Type::QrPayment, 2));
}

TEST(Messages, Looking_at_the_first_does_not_take_it_out)
{
    Messages queue;
    queue.insert(numbered(Type::ShowAd, 1));
    EXPECT_EQ(queue.first(), numbered(Type::ShowAd, 1));
    EXPECT_EQ(queue.first(), numbered(Type::ShowAd, 1));
    EXPECT_EQ(queue.count(), 1);
}

TEST(Messages, What_first_gave_outlives_the_queue_and_shares_its_data)
{
    const Message message = numbered(Type::ShowAd, 1);
    std::optional<Message> first;
    {
        Messages queue;
        queue.insert(message);
        first = queue.first();
    }
    EXPECT_EQ(first, message);
    EXPECT_TRUE(first->data.isSharedWith(message.data));
}

TEST(Messages, Removing_a_type_that_does_not_wait_changes_nothing)
{
    for (const Type absent : {Type::Configure, Type::ImageData, Type::PaymentDraft}) {
        Messages queue;
        queue.remove(absent);
        EXPECT_TRUE(queue.isEmpty());

        queue.insert(numbered(Type::QrPayment, 1));
        queue.remove(absent);
        EXPECT_EQ(queue.count(), 1);
        EXPECT_EQ(queue.first(), numbered(Type::QrPayment, 1));
    }
}

TEST(Messages, Removing_goes_by_type_so_a_newer_message_goes_with_the_one_posted)
{
    Messages queue;
    queue.insert(numbered(Type::UpdateDocument, 1));
    const auto posted = queue.first();
    queue.insert(numbered(Type::UpdateDocument, 2));
    queue.remove(posted->type);
    EXPECT_TRUE(queue.isEmpty());
}

TEST(Messages, A_picture_that_arrives_during_a_post_is_not_lost)
{
    Messages queue;
    queue.insert(numbered(Type::ImageData, 1));
    const auto posted = queue.first();
    queue.insert(numbered(Type::ImageData, 2));
    queue.remove(posted->type);
    EXPECT_EQ(queue.first(), numbered(Type::ImageData, 2));
}

TEST(Messages, Clearing_drops_all_types_and_all_pictures)
{
    Messages queue;
    for (const Type type : allTypes)
        queue.insert(numbered(type, 1));
    queue.insert(numbered(Type::ImageData, 2));
    queue.clear();
    EXPECT_TRUE(queue.isEmpty());
    EXPECT_EQ(queue.count(), 0);
    EXPECT_EQ(queue.first(), std::nullopt);

    queue.insert(numbered(Type::ImageData, 3));
    EXPECT_EQ(queue.first(), numbered(Type::ImageData, 3));
}

TEST(Messages, A_new_locker_holds_an_empty_queue_and_an_unlocked_mutex)
{
    Locker<Messages, QMutex> locker;
    EXPECT_TRUE(locker.lock()->isEmpty());
    locker.lock()->insert(numbered(Type::Content, 1));
    EXPECT_EQ(std::as_const(locker).lock()->count(), 1);
}

} // namespace
