#include "TillFixture.h"

#include <register/EventCode.h>

#include <PluginLoader.h>

#include <support/LogCapture.h>
#include <support/RecordingDisplay.h>
#include <support/Wait.h>

namespace {

class TillTest : public TillFixture
{
protected:
    QStringList askedTypes() const { return till.askedFor().times().keys(); }
    qsizetype askedFor(const QString &type) const
    {
        return till.askedFor().times().value(type).size();
    }
    void setAsks(bool asks) { singletons.config().setValue("RecordingPlugin:asks", asks); }
};

} // namespace

TEST_F(TillTest, Starts_and_ends_the_plugin_and_passes_on_what_it_returns)
{
    EXPECT_TRUE(till.init());
    EXPECT_TRUE(till.deinit());
    singletons.config().setValue("RecordingPlugin:init", false);
    singletons.config().setValue("RecordingPlugin:deinit", false);
    EXPECT_FALSE(till.init());
    EXPECT_FALSE(till.deinit());
    EXPECT_EQ(calls(), (QStringList{"init", "deinit", "init", "deinit"}));
}

TEST_F(TillTest, Gives_the_plugin_the_current_document)
{
    EXPECT_EQ(till.document(), nullptr);
    const auto document = QSharedPointer<BasicDocument>::create();
    till.setDocument(document);
    EXPECT_EQ(till.document(), document);
    EXPECT_EQ(till.receipt(), nullptr) << "the document is no receipt";
    const auto receipt = QSharedPointer<Receipt>::create(3);
    till.setDocument(receipt);
    EXPECT_EQ(till.receipt(), receipt);
    till.setDocument({});
    EXPECT_EQ(till.receipt(), nullptr);
    EXPECT_EQ(calls(), (QStringList{"document", "document", "no document"}));
}

TEST_F(TillTest, Runs_actions_only_between_init_and_deinit)
{
    const control::Action action{EContext::Sale, control::ReceiptChanged};
    till.runAction(action);
    EXPECT_TRUE(calls().isEmpty());
    till.init();
    till.runAction(action);
    EXPECT_EQ(calls(), (QStringList{"init", "action 1 197"}));
    till.deinit();
    till.runAction(action);
    EXPECT_EQ(calls(), QStringList("deinit"));
}

TEST_F(TillTest, Counts_what_is_asked_for_by_what_it_is_doing)
{
    till.init();
    till.setDocument(QSharedPointer<Receipt>::create(1));
    till.runAction({EContext::Sale, control::ReceiptChanged});
    till.notify(Event(QrPaymentDialog, {{"dialogId", 1}}));
    till.notify(Event(PriceListDialog, {{"dialogId", 2}}));
    till.notify(Event(SecondScreenContent));
    till.notify(Event(PaymentDraftUpdate));
    EXPECT_EQ(askedTypes(), (QStringList{"Configure", "Content", "PaymentDraft", "PriceList",
                                         "QrPayment", "UpdateDocument"}));
    EXPECT_EQ(askedFor("Configure"), 1);
    EXPECT_EQ(askedFor("UpdateDocument"), 2);
    EXPECT_EQ(askedFor("QrPayment"), 1);
    EXPECT_EQ(askedFor("PriceList"), 1);
}

TEST_F(TillTest, Counts_a_closed_dialog_to_the_view_that_showed_it)
{
    till.init();
    till.notify(Event(QrPaymentDialog, {{"dialogId", 1}}));
    till.notify(Event(PriceListDialog, {{"dialogId", 2}}));
    till.notify(Event(DialogClosed, {{"dialogId", 2}}));
    till.notify(Event(DialogClosed, {{"dialogId", 1}}));
    till.notify(Event(DialogClosed, {{"dialogId", 1}}));
    EXPECT_EQ(askedFor("PriceList"), 2);
    EXPECT_EQ(askedFor("QrPayment"), 3);
}

TEST_F(TillTest, Counts_no_dialog_that_the_plugin_did_not_show)
{
    till.init();
    setAsks(false);
    till.notify(Event(QrPaymentDialog, {{"dialogId", 1}}));
    setAsks(true);
    till.notify(Event(DialogClosed, {{"dialogId", 1}}));
    EXPECT_EQ(askedFor("QrPayment"), 0);
}

TEST_F(TillTest, Refuses_a_file_that_is_no_plugin)
{
    EXPECT_THROW(Till("no/such/plugin.so"), PluginError);
    EXPECT_THROW(Till(QStringLiteral(__FILE__)), PluginError);
}

TEST(TillWithTheShippedPlugin, Delivers_and_counts_the_same_messages)
{
    const support::FreshSingletons singletons;
    const support::LogCapture log;
    support::RecordingDisplay display;
    singletons.config().setValue("ViewConnector:server", display.url());
    singletons.config().setValue("ViewConnector:port", 0);
    singletons.config().setValue("ViewConnector:interval", 20);

    Till till(QStringLiteral(PLUGIN_FILE));
    ASSERT_TRUE(till.init());
    till.setDocument(QSharedPointer<Receipt>::create(1));
    till.notify(Event(SecondScreenContent, {{"data", "x"}, {"type", 1}}));
    till.notify(Event(PriceListDialog, {{"scroll", "down"}}));
    ASSERT_TRUE(support::waitFor([&] { return display.requests().size() == 4; }));
    EXPECT_EQ(display.paths(),
              (QStringList{"/configure", "/updateDocument", "/priceList", "/content"}));

    till.notify(Event(DialogClosed, {{"dialogId", 9}}));
    EXPECT_EQ(till.askedFor().times().keys(),
              (QStringList{"Configure", "Content", "PriceList", "UpdateDocument"}));
    EXPECT_TRUE(till.deinit());
}
