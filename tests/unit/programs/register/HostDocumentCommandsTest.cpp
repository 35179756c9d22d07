#include "TillFixture.h"

#include <register/HostCommands.h>

namespace {

class HostDocumentCommands : public TillFixture
{
protected:
    HostDocumentCommands()
    {
        addHostCommands(commands, till, {});
        till.init();
        calls();
    }

    QVariant property(const char *name) const { return till.document()->property(name); }

    /// A document whose properties partly follow from its content.
    void openReceipt() { till.setDocument(QSharedPointer<Receipt>::create(5)); }
};

} // namespace

TEST_F(HostDocumentCommands, Document_becomes_the_current_one_with_its_properties)
{
    does(R"({"do":"document","properties":{"number":7,"имя":"Чек","list":[{"a":1}],"none":null}})");
    EXPECT_EQ(calls(), QStringList("document"));
    ASSERT_NE(till.document(), nullptr);
    EXPECT_EQ(property("number"), QVariant(7));
    EXPECT_EQ(property("имя"), QVariant("Чек"));
    EXPECT_EQ(property("list").toList().value(0).toMap(), (QVariantMap{{"a", 1}}));
}

TEST_F(HostDocumentCommands, Document_is_a_new_one_each_time)
{
    does(R"({"do":"document","properties":{"a":1}})");
    const auto first = till.document();
    does(R"({"do":"document","properties":{}})");
    EXPECT_NE(till.document(), first);
    EXPECT_FALSE(property("a").isValid());
    EXPECT_EQ(first->property("a"), QVariant(1));
}

TEST_F(HostDocumentCommands, Document_may_be_none)
{
    does(R"({"do":"document","properties":{"a":1}})");
    does(R"({"do":"document","properties":null})");
    EXPECT_EQ(till.document(), nullptr);
    EXPECT_EQ(calls(), (QStringList{"document", "no document"}));
}

TEST_F(HostDocumentCommands, Change_keeps_what_it_does_not_name_and_runs_the_usual_action)
{
    does(R"({"do":"document","properties":{"a":1,"b":2}})");
    calls();
    does(R"({"do":"change","properties":{"b":3,"c":4}})");
    EXPECT_EQ(calls(), QStringList("action 255 197"));
    EXPECT_EQ(property("a"), QVariant(1));
    EXPECT_EQ(property("b"), QVariant(3));
    EXPECT_EQ(property("c"), QVariant(4));
}

TEST_F(HostDocumentCommands, Change_runs_another_action_if_asked_to)
{
    does(R"({"do":"document","properties":{}})");
    calls();
    does(R"({"do":"change","properties":{},"action":137})");
    does(R"({"do":"change","properties":{},"context":6,"action":131})");
    does(R"({"do":"change","properties":{},"context":1})");
    does(R"({"do":"change","properties":{},"context":1,"action":131})"); // nobody's
    EXPECT_EQ(calls(), (QStringList{"action 255 137", "action 6 131", "action 1 197"}));
}

TEST_F(HostDocumentCommands, Change_is_applied_before_the_action_runs)
{
    std::optional<QStringList> callsBefore;
    does(R"({"do":"document","properties":{"a":1}})");
    const QObject guard;
    QObject::connect(till.document().data(), &QObject::objectNameChanged, &guard,
                     [&](const QString &) { callsBefore = calls(); });
    calls();
    does(R"({"do":"change","properties":{"objectName":"x"}})");
    ASSERT_TRUE(callsBefore);
    EXPECT_EQ(*callsBefore, QStringList()) << "the action ran before the change";
    EXPECT_EQ(calls(), QStringList("action 255 197"));
}

TEST_F(HostDocumentCommands, Change_needs_a_document)
{
    EXPECT_EQ(
        run(R"({"do":"change","properties":{"a":1}})"),
        "there is no current document: set one with {\"do\":\"document\",\"properties\":{…}}");
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(HostDocumentCommands, Change_refuses_a_property_that_follows_from_the_content)
{
    openReceipt();
    calls();
    for (const auto *name : {"number", "state", "positions", "sum", "discountSum", "total",
                             "payments", "change", "modelRevision"}) {
        const auto command = QString(R"({"do":"change","properties":{"%1":1}})").arg(name);
        EXPECT_EQ(run(command.toUtf8()),
                  QString("the property \"%1\" of this document follows from its content: change "
                          "it with the cashier's commands")
                      .arg(name));
    }
    EXPECT_TRUE(calls().isEmpty());
    EXPECT_EQ(property("number"), QVariant(5));
}

TEST_F(HostDocumentCommands, Change_that_is_refused_changes_nothing)
{
    openReceipt();
    EXPECT_NE(run(R"({"do":"change","properties":{"a":1,"total":2}})"), "");
    EXPECT_FALSE(property("a").isValid());
}

TEST_F(HostDocumentCommands, Change_adds_to_a_receipt_what_is_not_its_own)
{
    openReceipt();
    does(R"({"do":"change","properties":{"cashier":"Иванова"}})");
    EXPECT_EQ(property("cashier"), QVariant("Иванова"));
}
