#include <Wrapper.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

struct Discount : events::Wrapper
{
    using Wrapper::Wrapper;
    QVariant percent() const { return argument(QStringLiteral("percent")); }
};

} // namespace

TEST(Wrapper, Reads_the_arguments_of_its_event)
{
    EXPECT_EQ(Discount(Event(1, {{QStringLiteral("percent"), 15}})).percent(), QVariant(15));
}

TEST(Wrapper, Gives_an_invalid_value_for_a_missing_argument)
{
    EXPECT_FALSE(Discount(Event(1)).percent().isValid());
}

TEST(Wrapper, Keeps_its_event_after_the_original_is_gone)
{
    auto event = std::make_unique<Event>(1, QVariantMap{{QStringLiteral("percent"), 15}});
    const Discount discount(*event);
    event.reset();
    EXPECT_EQ(discount.percent(), QVariant(15));
}
