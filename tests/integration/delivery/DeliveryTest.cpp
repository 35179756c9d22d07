#include "RunningPlugin.h"

#include <Receipt.h>

using namespace std::chrono_literals;
using support::ScriptedAnswer;
using Type = view::Message::Type;
using Delivery = RunningPlugin;

TEST_F(Delivery, The_configuration_is_the_first_message_that_the_display_gets)
{
    plugin->setDocument(QSharedPointer<Receipt>::create(1));
    ASSERT_TRUE(waitForRequests(2));
    EXPECT_EQ(paths(), (QByteArrayList{"/configure", "/updateDocument"}));
}

TEST_F(Delivery, A_message_carries_its_map_as_compact_json)
{
    letConfigurationPass();
    plugin->addMessage({Type::Content, {{"text", "Скидка 10 %"}, {"none", QVariant()}}});
    ASSERT_TRUE(waitForRequests(2));

    const auto request = display.requests().last();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path, "/content");
    EXPECT_EQ(request.field("accept"), "application/json");
    EXPECT_EQ(request.field("content-type"), "application/json");
    EXPECT_EQ(request.body, "{\"none\":null,\"text\":\"Скидка 10 %\"}");
}

TEST_F(Delivery, Messages_queued_at_once_go_out_one_an_interval_most_urgent_first)
{
    letConfigurationPass();
    display.answerNext({ScriptedAnswer::slow(200ms)}); // meanwhile the others are queued
    plugin->addMessage({Type::Configure, {}});
    ASSERT_TRUE(waitForRequests(2));
    for (const auto type : {Type::PaymentDraft, Type::Content, Type::ImageData, Type::PriceList,
                            Type::ShowAd, Type::QrPayment, Type::UpdateDocument})
        plugin->addMessage({type, {}});

    ASSERT_TRUE(waitForRequests(2 + 7));
    EXPECT_EQ(paths(2), (QByteArrayList{"/updateDocument", "/qrPayment", "/showAD", "/priceList",
                                        "/image", "/content", "/paymentdraft"}));
    const auto requests = display.requests();
    for (qsizetype i = 2; i < requests.size(); ++i)
        EXPECT_GE(requests[i].arrival - requests[i - 1].arrival, interval * 9 / 10);
}

TEST_F(Delivery, A_message_for_an_idle_client_goes_out_without_an_interval)
{
    plugin->deinit();
    singletons.config().setValue(QStringLiteral("ViewConnector:interval"), 60'000);
    plugin = std::make_unique<ViewConnector>();
    display.answer(ScriptedAnswer::ok());
    const auto before = display.requestCount();
    plugin->init();
    EXPECT_TRUE(waitForRequests(before + 1)); // would take a minute otherwise
}

TEST_F(Delivery, While_the_display_is_down_the_newest_state_waits_and_arrives_once)
{
    letConfigurationPass();
    display.goDown();
    for (int i = 0; i < 10; ++i)
        plugin->addMessage(numbered(Type::UpdateDocument, i));
    support::letPass(3 * interval);
    plugin->addMessage(numbered(Type::UpdateDocument, 10));
    display.comeUp();

    ASSERT_TRUE(waitForRequests(2));
    support::letPass(3 * interval);
    EXPECT_EQ(bodies(1), QByteArrayList{numberedBody(10)});
}

TEST_F(Delivery, No_picture_is_lost_while_the_display_fails)
{
    letConfigurationPass();
    display.answerNext({ScriptedAnswer::status(500), ScriptedAnswer::ok(), ScriptedAnswer::closed(),
                        ScriptedAnswer::ok(), ScriptedAnswer::garbage()});
    for (int i = 0; i < 4; ++i)
        plugin->addMessage(numbered(Type::ImageData, i));

    ASSERT_TRUE(waitForRequests(1 + 7));
    support::letPass(3 * interval);
    EXPECT_EQ(bodies(1),
              (QByteArrayList{numberedBody(0), numberedBody(0), numberedBody(1), numberedBody(1),
                              numberedBody(2), numberedBody(2), numberedBody(3)}));
}

TEST_F(Delivery, A_newer_message_queued_while_an_older_of_its_type_is_posted_goes_with_it)
{
    letConfigurationPass();
    display.answerNext({ScriptedAnswer::slow(300ms)});
    plugin->addMessage(numbered(Type::Content, 1));
    ASSERT_TRUE(waitForRequests(2));
    plugin->addMessage(numbered(Type::Content, 2));

    support::letPass(300ms + 4 * interval);
    EXPECT_EQ(bodies(1), QByteArrayList{numberedBody(1)});
}

TEST_F(Delivery, Started_again_each_message_is_delivered_once)
{
    letConfigurationPass();
    plugin->deinit();
    plugin->init();
    ASSERT_TRUE(waitForRequests(2));
    support::letPass(3 * interval);
    plugin->addMessage(numbered(Type::Content, 1));
    ASSERT_TRUE(waitForRequests(3));
    support::letPass(3 * interval);

    EXPECT_EQ(paths(), (QByteArrayList{"/configure", "/configure", "/content"}));
}

TEST_F(Delivery, After_deinit_nothing_is_delivered)
{
    letConfigurationPass();
    plugin->deinit();
    plugin->addMessage(numbered(Type::Content, 1));
    support::letPass(5 * interval);
    EXPECT_EQ(display.requestCount(), 1);
}
