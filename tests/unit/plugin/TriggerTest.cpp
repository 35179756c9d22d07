// The actions of the cashier that the plug-in follows.

#include "PluginFixture.h"

#include <BasicDocument.h>

namespace {

struct Row
{
    int context;
    int action;
    int order;
    int result;
    int priority;
};

const Row rows[] = {
    {255, 197, 1, 0, 3},
    {255, 137, 0, 0, 3},
    {6, 131, 0, 2, 3},
};

class Triggers : public PluginFixture
{
protected:
    Triggers() { connector->initTriggers(); }
};

TEST_F(Triggers, They_are_three_in_this_order_with_these_codes)
{
    const auto triggers = connector->triggers();
    ASSERT_EQ(triggers.size(), std::ssize(rows));
    for (qsizetype i = 0; i < triggers.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(static_cast<int>(triggers[i].context()), rows[i].context);
        EXPECT_EQ(static_cast<int>(triggers[i].action()), rows[i].action);
        EXPECT_EQ(static_cast<int>(triggers[i].order()), rows[i].order);
        EXPECT_EQ(static_cast<int>(triggers[i].result()), rows[i].result);
        EXPECT_EQ(static_cast<int>(triggers[i].priority()), rows[i].priority);
    }
}

TEST_F(Triggers, Each_queues_the_document_and_lets_the_action_go_on)
{
    const auto document = QSharedPointer<BasicDocument>::create();
    document->setProperty("sum", 5);
    connector->setDocument(document);
    for (const auto &trigger : connector->triggers()) {
        connector->takeSent();
        EXPECT_EQ(static_cast<int>(trigger.run(control::Action())), 2);
        EXPECT_EQ(connector->takeSent(), QList{view::Message(Type::UpdateDocument, {{"sum", 5}})});
    }
}

TEST_F(Triggers, What_the_action_was_does_not_matter)
{
    for (const int type : {0, 131, 137, 197, 1000}) {
        const control::Action action{static_cast<EContext::Code>(type),
                                     static_cast<control::EActionType>(type)};
        EXPECT_EQ(static_cast<int>(connector->onDocumentModified(action)), 2);
        EXPECT_EQ(connector->takeSent(), QList{view::Message(Type::UpdateDocument, {})});
    }
}

TEST_F(Triggers, Nothing_is_logged)
{
    connector->onDocumentModified(control::Action());
    EXPECT_TRUE(log.lines().isEmpty());
}

} // namespace
