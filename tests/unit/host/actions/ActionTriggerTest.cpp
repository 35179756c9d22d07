#include <ActionTrigger.h>

#include <gtest/gtest.h>

namespace {

constexpr auto otherScreen = static_cast<EContext::Code>(7);

ActionTrigger trigger(EContext::Code context, control::EActionType type)
{
    return ActionTrigger(
        context, type, ActionTrigger::AfterAction,
        [](const control::Action &) { return EContext::Continue; }, ActionTrigger::Completed,
        ActionTrigger::Normal);
}

} // namespace

TEST(ActionTrigger, Matches_by_action_and_context)
{
    using control::PaymentChanged;
    using control::ReceiptChanged;
    const struct
    {
        EContext::Code registered;
        EContext::Code happened;
        control::EActionType type;
        bool matches;
    } rows[] = {
        {EContext::Any, EContext::Any, PaymentChanged, true},
        {EContext::Any, EContext::Payment, PaymentChanged, true},
        {EContext::Any, otherScreen, PaymentChanged, true},
        {EContext::Payment, EContext::Payment, PaymentChanged, true},
        {EContext::Payment, EContext::Any, PaymentChanged, false},
        {EContext::Payment, otherScreen, PaymentChanged, false},
        {EContext::Any, EContext::Any, ReceiptChanged, false},
        {EContext::Payment, EContext::Payment, ReceiptChanged, false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message()
                     << row.registered << " at " << row.happened << ", action " << row.type);
        EXPECT_EQ(trigger(row.registered, PaymentChanged).matches({row.happened, row.type}),
                  row.matches);
    }
}

TEST(ActionTrigger, Gives_its_handler_the_action_and_returns_the_handlers_result)
{
    control::Action seen;
    const ActionTrigger trigger(
        EContext::Payment, control::PaymentChanged, ActionTrigger::BeforeAction,
        [&](const control::Action &action) {
            seen = action;
            return static_cast<EContext::Result>(9);
        },
        ActionTrigger::AnyOutcome, ActionTrigger::First);
    EXPECT_EQ(trigger.run({EContext::Payment, control::PaymentChanged}), 9);
    EXPECT_EQ(seen.context, EContext::Payment);
    EXPECT_EQ(seen.type, control::PaymentChanged);
}

TEST(ActionTrigger, Has_what_it_was_made_with)
{
    const auto made = trigger(EContext::Payment, control::ReceiptStateChanged);
    EXPECT_EQ(made.context(), 6);
    EXPECT_EQ(made.action(), 137);
    EXPECT_EQ(made.order(), 1);
    EXPECT_EQ(made.result(), 2);
    EXPECT_EQ(made.priority(), 3);
}
