#include <view/Message.h>

#include <gtest/gtest.h>

#include <support/PrintQt.h>

#include <type_traits>

namespace {

using view::Message;
using Type = Message::Type;

QVariantMap receipt(int total)
{
    return {{"total", total}, {"positions", QVariantList{QVariantMap{{"name", "Хлеб"}}}}};
}

TEST(Message, Its_types_have_the_values_that_set_the_order_of_delivery)
{
    EXPECT_EQ(static_cast<int>(Type::Configure), 0);
    EXPECT_EQ(static_cast<int>(Type::UpdateDocument), 1);
    EXPECT_EQ(static_cast<int>(Type::QrPayment), 2);
    EXPECT_EQ(static_cast<int>(Type::ShowAd), 3);
    EXPECT_EQ(static_cast<int>(Type::PriceList), 4);
    EXPECT_EQ(static_cast<int>(Type::ImageData), 5);
    EXPECT_EQ(static_cast<int>(Type::Content), 6);
    EXPECT_EQ(static_cast<int>(Type::PaymentDraft), 7);
}

TEST(Message, Its_type_is_a_32_bit_enumeration)
{
    static_assert(std::is_same_v<std::underlying_type_t<Type>, qint32>);
    EXPECT_EQ(sizeof(Type), 4U);
}

TEST(Message, It_stores_the_type_and_the_data_that_it_is_made_of)
{
    const Message message(Type::Content, receipt(5));
    EXPECT_EQ(message.type, Type::Content);
    EXPECT_EQ(message.data, receipt(5));
}

TEST(Message, A_copy_shares_the_data)
{
    const Message message(Type::UpdateDocument, receipt(5));
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
    const Message copy = message;
    EXPECT_TRUE(copy.data.isSharedWith(message.data));
    EXPECT_EQ(copy, message);
}

TEST(Message, Two_built_separately_of_equal_parts_are_equal)
{
    EXPECT_EQ(Message(Type::UpdateDocument, receipt(5)), Message(Type::UpdateDocument, receipt(5)));
}

TEST(Message, A_difference_in_one_value_makes_two_unequal)
{
    EXPECT_NE(Message(Type::UpdateDocument, receipt(5)), Message(Type::UpdateDocument, receipt(6)));
    EXPECT_NE(Message(Type::QrPayment, {{"amount", 1}}),
              Message(Type::QrPayment, {{"amount", "x"}}));
}

TEST(Message, A_difference_in_one_key_makes_two_unequal)
{
    EXPECT_NE(Message(Type::QrPayment, {{"amount", 1}}), Message(Type::QrPayment, {{"Amount", 1}}));
}

TEST(Message, An_entry_more_makes_two_unequal)
{
    const Message one(Type::QrPayment, {{"amount", 1}});
    const Message two(Type::QrPayment, {{"amount", 1}, {"timeout", 1}});
    EXPECT_NE(one, two);
    EXPECT_NE(two, one);
}

TEST(Message, A_difference_in_type_makes_two_unequal)
{
    EXPECT_NE(Message(Type::QrPayment, receipt(5)), Message(Type::PriceList, receipt(5)));
}

TEST(Message, An_empty_map_equals_a_null_one)
{
    QVariantMap emptied{{"a", 1}};
    emptied.remove("a");
    EXPECT_EQ(Message(Type::Content, emptied), Message(Type::Content, QVariantMap()));
}

} // namespace
