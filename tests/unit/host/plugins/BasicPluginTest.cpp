#include <BasicPlugin.h>

#include <gtest/gtest.h>

namespace {

class TestPlugin : public BasicPlugin
{
public:
    bool init() override
    {
        for (const auto type : {control::PaymentChanged, control::ReceiptChanged})
            addTrigger(ActionTrigger(
                EContext::Any, type, ActionTrigger::AfterAction,
                [](const control::Action &) { return EContext::Continue; },
                ActionTrigger::Completed, ActionTrigger::Normal));
        return true;
    }
};

} // namespace

TEST(BasicPlugin, Has_no_triggers_before_it_is_started)
{
    EXPECT_EQ(TestPlugin().triggers().size(), 0);
}

TEST(BasicPlugin, Keeps_its_triggers_in_the_order_of_adding)
{
    TestPlugin plugin;
    plugin.init();
    ASSERT_EQ(plugin.triggers().size(), 2);
    EXPECT_EQ(plugin.triggers().at(0).action(), control::PaymentChanged);
    EXPECT_EQ(plugin.triggers().at(1).action(), control::ReceiptChanged);
}

TEST(BasicPlugin, Drops_its_triggers_at_the_end_and_may_be_started_again)
{
    TestPlugin plugin;
    plugin.init();
    EXPECT_TRUE(plugin.deinit());
    EXPECT_EQ(plugin.triggers().size(), 0);
    plugin.init();
    EXPECT_EQ(plugin.triggers().size(), 2);
}
