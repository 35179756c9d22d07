#include <ActionRunner.h>

#include <BasicPlugin.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

constexpr auto stop = static_cast<EContext::Result>(0);

class TriggeringPlugin : public BasicPlugin
{
public:
    bool init() override { return true; }
    using BasicPlugin::addTrigger;
};

class ActionRuns : public testing::Test
{
protected:
    ActionRuns()
    {
        runner.addPlugin(&plugin);
        runner.addPlugin(&otherPlugin);
    }

    /// A trigger that notes its name in `ran`.
    ActionTrigger named(const QString &name, int priority = ActionTrigger::Normal,
                        EContext::Code context = EContext::Any,
                        EContext::Result result = EContext::Continue)
    {
        return ActionTrigger(
            context, control::ReceiptChanged, ActionTrigger::AfterAction,
            [this, name, result](const control::Action &) {
                ran.append(name);
                return result;
            },
            ActionTrigger::Completed, static_cast<ActionTrigger::Priority>(priority));
    }

    int run(EContext::Code context = EContext::Any)
    {
        return runner.run({context, control::ReceiptChanged});
    }

    ActionRunner runner;
    TriggeringPlugin plugin;
    TriggeringPlugin otherPlugin;
    QStringList ran;
};

QStringList names(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

TEST_F(ActionRuns, Run_nothing_without_triggers)
{
    EXPECT_EQ(run(), 0);
}

TEST_F(ActionRuns, Run_each_matching_trigger_once_whatever_its_plug_in)
{
    plugin.addTrigger(named(QStringLiteral("a")));
    otherPlugin.addTrigger(named(QStringLiteral("b")));
    EXPECT_EQ(run(), 2);
    EXPECT_EQ(ran, names("a b"));
}

TEST_F(ActionRuns, Leave_out_triggers_of_other_actions)
{
    plugin.addTrigger(named(QStringLiteral("a")));
    EXPECT_EQ(runner.run({EContext::Any, control::PaymentChanged}), 0);
    EXPECT_EQ(ran, QStringList());
}

TEST_F(ActionRuns, Take_any_context_for_255_and_only_the_same_for_another)
{
    plugin.addTrigger(named(QStringLiteral("any"), 3, EContext::Any));
    plugin.addTrigger(named(QStringLiteral("payment"), 3, EContext::Payment));
    const struct
    {
        int context;
        const char *ran;
    } rows[] = {{6, "any payment"}, {255, "any"}, {1, "any"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.context);
        ran.clear();
        run(static_cast<EContext::Code>(row.context));
        EXPECT_EQ(ran, names(row.ran));
    }
}

TEST_F(ActionRuns, Go_by_priority_and_among_equals_by_the_order_of_adding)
{
    plugin.addTrigger(named(QStringLiteral("c1"), 3));
    plugin.addTrigger(named(QStringLiteral("b1"), 1));
    plugin.addTrigger(named(QStringLiteral("c2"), 3));
    otherPlugin.addTrigger(named(QStringLiteral("a1"), 0));
    otherPlugin.addTrigger(named(QStringLiteral("b2"), 1));
    otherPlugin.addTrigger(named(QStringLiteral("c3"), 3));
    EXPECT_EQ(run(), 6);
    EXPECT_EQ(ran, names("a1 b1 b2 c1 c2 c3"));
}

TEST_F(ActionRuns, End_with_the_first_result_that_is_not_2)
{
    plugin.addTrigger(named(QStringLiteral("last"), 3));
    plugin.addTrigger(named(QStringLiteral("stops"), 1, EContext::Any, stop));
    plugin.addTrigger(named(QStringLiteral("first"), 0));
    EXPECT_EQ(run(), 2);
    EXPECT_EQ(ran, names("first stops"));
}

TEST_F(ActionRuns, Filter_nothing_by_order_or_result)
{
    int count = 0;
    for (const auto order : {ActionTrigger::BeforeAction, ActionTrigger::AfterAction})
        for (const auto result : {ActionTrigger::AnyOutcome, ActionTrigger::Completed})
            plugin.addTrigger(ActionTrigger(
                EContext::Any, control::ReceiptChanged, order,
                [&](const control::Action &) {
                    ++count;
                    return EContext::Continue;
                },
                result, ActionTrigger::Normal));
    EXPECT_EQ(run(), 4);
    EXPECT_EQ(count, 4);
}

TEST_F(ActionRuns, Leave_out_a_plug_in_that_was_removed)
{
    plugin.addTrigger(named(QStringLiteral("a")));
    otherPlugin.addTrigger(named(QStringLiteral("b")));
    runner.removePlugin(&plugin);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(ran, names("b"));
}

TEST_F(ActionRuns, Run_nothing_of_a_plug_in_that_has_ended)
{
    plugin.addTrigger(named(QStringLiteral("a")));
    otherPlugin.addTrigger(named(QStringLiteral("b")));
    plugin.deinit();
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(ran, names("b"));
}

TEST_F(ActionRuns, Bear_a_handler_that_adds_triggers_or_ends_its_plug_in)
{
    plugin.addTrigger(ActionTrigger(
        EContext::Any, control::ReceiptChanged, ActionTrigger::AfterAction,
        [this](const control::Action &) {
            ran.append(QStringLiteral("ends"));
            plugin.deinit();
            otherPlugin.addTrigger(named(QStringLiteral("late")));
            return EContext::Continue;
        },
        ActionTrigger::Completed, ActionTrigger::First));
    plugin.addTrigger(named(QStringLiteral("a")));

    EXPECT_EQ(run(), 2); // as it was registered when the action happened
    EXPECT_EQ(ran, names("ends a"));
    ran.clear();
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(ran, names("late"));
}
