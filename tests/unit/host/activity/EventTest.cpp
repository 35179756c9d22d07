#include <Event.h>

#include <support/PrintQt.h>

#include <QVariant>

#include <gtest/gtest.h>

namespace {

const auto name = QStringLiteral("amount");

} // namespace

TEST(Event, Has_the_code_and_the_arguments_that_it_was_made_with)
{
    const QVariantMap arguments{{name, 100}, {QStringLiteral("подпись"), QStringLiteral("чек")}};
    const Event event(117, arguments);
    EXPECT_EQ(event.getCode(), 117);
    EXPECT_EQ(event.getArguments(), arguments);
}

TEST(Event, Has_code_0_and_no_arguments_by_default)
{
    EXPECT_EQ(Event().getCode(), 0);
    EXPECT_EQ(Event().getArguments(), QVariantMap());
    EXPECT_EQ(Event(5).getArguments(), QVariantMap());
}

TEST(Event, Gives_the_default_only_for_a_missing_argument)
{
    const Event event(1, {{name, QVariant()}});
    EXPECT_TRUE(event.contains(name));
    EXPECT_FALSE(event.value(name, 5).isValid());
    EXPECT_FALSE(event.contains(QStringLiteral("Amount")));
    EXPECT_EQ(event.value(QStringLiteral("Amount"), 5), QVariant(5));
}

TEST(Event, Travels_in_a_variant)
{
    const auto variant = QVariant::fromValue(Event(103, {{name, 1}}));
    EXPECT_EQ(variant.value<Event>().getCode(), 103);
    EXPECT_EQ(variant.value<Event>().value(name, 0), QVariant(1));
}
