// From the host's calls to the display.

#include "PluginFixture.h"

#include <BasicDocument.h>

#include <support/ReportingValue.h>

namespace {

class Delivery : public PluginFixture
{
protected:
    /// Starts and stops the delivery in the middle of the first post, that of the configuration.
    void startAndHold()
    {
        rest->hold();
        connector->init();
        ASSERT_TRUE(support::waitFor([this] { return rest->postCount() == 1; }));
    }
};

TEST_F(Delivery, What_waits_goes_out_by_type_whatever_the_order_it_came_in)
{
    startAndHold();
    connector->handleEvent(Event(266));
    connector->handleEvent(Event(261));
    connector->addMessage({Type::ImageData, {{"n", 1}}});
    connector->handleEvent(Event(117));
    connector->addMessage({Type::ShowAd, {}});
    connector->handleEvent(Event(184));
    connector->addMessage({Type::ImageData, {{"n", 2}}});
    connector->setDocument(QSharedPointer<BasicDocument>::create());
    rest->release();
    ASSERT_TRUE(waitUntilAllSent());
    EXPECT_EQ(rest->paths(),
              (QStringList{"/configure", "/updateDocument", "/qrPayment", "/showAD", "/priceList",
                           "/image", "/image", "/content", "/paymentdraft"}));
}

TEST_F(Delivery, What_a_value_reports_as_it_leaves_the_queue_is_sent)
{
    ProbedConnector plugin;
    const auto reporting = [&plugin](int report) {
        return support::reportingValue([=, &plugin] {
            plugin.addMessage({Type::PaymentDraft, {{"report", report}}});
        });
    };
    plugin.addMessage({Type::Content, {{"value", reporting(1)}}});
    plugin.addMessage({Type::Content, {}}); // instead of that
    EXPECT_EQ(plugin.messages->lock()->count(), 2);
    plugin.messages->lock()->remove(Type::PaymentDraft);

    plugin.addMessage({Type::Content, {{"value", reporting(2)}}});
    plugin.deinit();
    EXPECT_EQ(plugin.messages->lock()->first(), view::Message(Type::PaymentDraft, {{"report", 2}}));
}

TEST_F(Delivery, Of_many_changes_during_a_post_the_display_gets_the_last)
{
    startAndHold();
    for (int sum = 1; sum <= 100; ++sum)
        connector->handleEvent(Event(266, {{"sum", sum}}));
    rest->release();
    ASSERT_TRUE(waitUntilAllSent());
    ASSERT_EQ(rest->paths(), (QStringList{"/configure", "/paymentdraft"}));
    EXPECT_EQ(rest->posts().constLast().body, QByteArray("{\"sum\":100}"));
}

TEST_F(Delivery, A_dialog_shown_and_closed_before_its_turn_is_only_closed)
{
    startAndHold();
    connector->handleEvent(Event(184, {{"dialogId", 7}, {"qrCode", "x"}}));
    connector->handleEvent(Event(103, {{"dialogId", 7}}));
    rest->release();
    ASSERT_TRUE(waitUntilAllSent());
    ASSERT_EQ(rest->paths(), (QStringList{"/configure", "/qrPayment"}));
    EXPECT_EQ(rest->posts().constLast().body, QByteArray("{\"close\":true}"));
}

TEST_F(Delivery, A_close_that_comes_while_the_dialog_is_being_posted_goes_with_it)
{
    connector->init();
    ASSERT_TRUE(waitUntilAllSent());
    rest->hold();
    connector->handleEvent(Event(184, {{"dialogId", 7}}));
    ASSERT_TRUE(support::waitFor([this] { return rest->postCount() == 2; }));
    connector->handleEvent(Event(103, {{"dialogId", 7}}));
    EXPECT_TRUE(connector->dialogTypes.isEmpty());
    rest->release();
    ASSERT_TRUE(waitUntilAllSent());
    flushClientThread();
    EXPECT_EQ(rest->paths(), (QStringList{"/configure", "/qrPayment"}));
}

TEST_F(Delivery, Producers_never_wait_for_the_display)
{
    startAndHold();
    for (int n = 0; n < 1000; ++n)
        connector->handleEvent(Event(261)); // would hang, did it wait for the post
    EXPECT_EQ(rest->postCount(), 1);
    rest->release();
    EXPECT_TRUE(waitUntilAllSent());
}

TEST_F(Delivery, Posts_are_made_on_the_client_thread_one_at_a_time)
{
    std::atomic<int> inside = 0;
    std::atomic<bool> overlapped = false;
    std::atomic<bool> elsewhere = false;
    rest->duringPost = [&, own = connector->clientThread](const auto &) {
        overlapped = overlapped || ++inside > 1;
        elsewhere = elsewhere || QThread::currentThread() != own;
        --inside;
    };
    connector->init();
    for (int n = 0; n < 20; ++n)
        connector->addMessage({Type::ImageData, {{"n", n}}});
    ASSERT_TRUE(waitUntilAllSent());
    connector.reset(); // before what the posts refer to
    EXPECT_FALSE(overlapped);
    EXPECT_FALSE(elsewhere);
    EXPECT_EQ(rest->postCount(), 21);
}

} // namespace
