// One delivery step, without waiting for anything.

#include "ClientFixture.h"

#include <support/ReportingValue.h>

#include <QJsonDocument>

namespace {

class ClientDelivery : public ClientFixture
{
protected:
    ClientDelivery() { start(10'000); } // no tick comes while a test runs
};

TEST_F(ClientDelivery, A_message_that_the_display_accepted_leaves_the_queue)
{
    insert(Type::UpdateDocument, {{"sum", 1}});
    client.onTimeout();
    EXPECT_EQ(rest->paths(), QStringList{"/updateDocument"});
    EXPECT_TRUE(queue->lock()->isEmpty());
}

TEST_F(ClientDelivery, A_message_stays_after_any_result_but_0)
{
    insert(Type::UpdateDocument, {{"sum", 1}});
    for (const int result : {7, 28, 404, 500, -1}) {
        rest->answer({result});
        client.onTimeout();
        EXPECT_EQ(queue->lock()->first(), view::Message(Type::UpdateDocument, {{"sum", 1}}))
            << result;
    }
    EXPECT_EQ(rest->postCount(), 5);
}

TEST_F(ClientDelivery, The_timer_is_armed_after_a_success)
{
    insert(Type::Content);
    client.onTimeout();
    EXPECT_TRUE(client.timer->isActive());
    EXPECT_TRUE(client.timer->isSingleShot());
    EXPECT_EQ(client.timer->interval(), 10'000);
}

TEST_F(ClientDelivery, The_timer_is_armed_after_a_failure)
{
    rest->answer({7});
    insert(Type::Content);
    client.onTimeout();
    EXPECT_TRUE(client.timer->isActive());
}

TEST_F(ClientDelivery, The_timer_is_not_running_during_the_post)
{
    bool active = true;
    rest->duringPost = [&](const auto &) { active = client.timer->isActive(); };
    insert(Type::Content);
    client.onTimeout();
    EXPECT_FALSE(active);
}

TEST_F(ClientDelivery, With_nothing_waiting_the_timer_stays_off)
{
    client.onTimeout();
    EXPECT_EQ(rest->postCount(), 0);
    EXPECT_FALSE(client.timer->isActive());
}

TEST_F(ClientDelivery, Each_step_posts_one_message)
{
    insert(Type::Content);
    insert(Type::QrPayment);
    client.onTimeout();
    EXPECT_EQ(rest->paths(), QStringList{"/qrPayment"});
    EXPECT_EQ(queue->lock()->count(), 1);
}

TEST_F(ClientDelivery, A_wake_up_posts_at_once)
{
    insert(Type::Content);
    client.hasMessage();
    EXPECT_EQ(rest->paths(), QStringList{"/content"});
}

TEST_F(ClientDelivery, A_wake_up_does_nothing_while_a_tick_is_due)
{
    insert(Type::Content);
    client.hasMessage();
    insert(Type::QrPayment);
    client.hasMessage();
    EXPECT_EQ(rest->paths(), QStringList{"/content"});
    EXPECT_EQ(queue->lock()->first()->type, Type::QrPayment);
}

TEST_F(ClientDelivery, A_wake_up_without_a_message_does_nothing)
{
    client.hasMessage();
    EXPECT_EQ(rest->postCount(), 0);
    EXPECT_FALSE(client.timer->isActive());
}

TEST_F(ClientDelivery, The_body_is_compact_JSON_of_the_data)
{
    insert(Type::PaymentDraft, {{"sum", 12.5},
                                {"name", "Чай"},
                                {"paid", false},
                                {"card", QVariant()},
                                {"lines", QVariantList{1, QVariantMap{{"a", "b"}}}}});
    client.onTimeout();
    EXPECT_EQ(rest->posts().constFirst().body,
              QByteArray("{\"card\":null,\"lines\":[1,{\"a\":\"b\"}],\"name\":\"Чай\","
                         "\"paid\":false,\"sum\":12.5}"));
}

TEST_F(ClientDelivery, A_message_without_data_is_posted_as_an_empty_object)
{
    insert(Type::PaymentDraft);
    client.onTimeout();
    EXPECT_EQ(rest->posts().constFirst().body, QByteArray("{}"));
}

TEST_F(ClientDelivery, The_headers_say_that_both_sides_speak_JSON)
{
    insert(Type::Content);
    client.onTimeout();
    const QHash<QString, QString> expected{{"Accept", "application/json"},
                                           {"Content-Type", "application/json"}};
    EXPECT_EQ(rest->posts().constFirst().headers, expected);
}

TEST_F(ClientDelivery, The_queue_is_not_locked_during_the_post)
{
    qsizetype waiting = 0;
    rest->duringPost = [&](const auto &) { waiting = queue->lock()->count(); }; // or it hangs
    insert(Type::Content);
    client.onTimeout();
    EXPECT_EQ(waiting, 1);
}

TEST_F(ClientDelivery, A_newer_message_of_the_type_that_comes_during_its_post_goes_with_it)
{
    rest->duringPost = [&](const auto &) { insert(Type::UpdateDocument, {{"sum", 2}}); };
    insert(Type::UpdateDocument, {{"sum", 1}});
    client.onTimeout();
    EXPECT_EQ(rest->posts().constFirst().body, QByteArray("{\"sum\":1}"));
    EXPECT_TRUE(queue->lock()->isEmpty());
}

TEST_F(ClientDelivery, A_newer_message_of_the_type_that_comes_during_a_failed_post_is_next)
{
    rest->answer({7, 0});
    rest->duringPost = [&](const auto &) { insert(Type::UpdateDocument, {{"sum", 2}}); };
    insert(Type::UpdateDocument, {{"sum", 1}});
    client.onTimeout();
    rest->duringPost = nullptr;
    client.onTimeout();
    EXPECT_EQ(rest->posts().constLast().body, QByteArray("{\"sum\":2}"));
}

TEST_F(ClientDelivery, Another_type_that_comes_during_a_post_is_kept)
{
    rest->duringPost = [&](const auto &) { insert(Type::Configure); };
    insert(Type::UpdateDocument);
    client.onTimeout();
    EXPECT_EQ(queue->lock()->count(), 1);
    EXPECT_EQ(queue->lock()->first()->type, Type::Configure);
}

TEST_F(ClientDelivery, Pictures_that_come_during_a_post_are_all_sent_in_order)
{
    int arrived = 0;
    rest->duringPost = [&](const auto &) {
        if (arrived < 3)
            insert(Type::ImageData, {{"n", ++arrived}});
    };
    insert(Type::ImageData, {{"n", 0}});
    for (int step = 0; step < 5; ++step)
        client.onTimeout();

    QStringList bodies;
    for (const auto &post : rest->posts())
        bodies.append(QString::fromUtf8(post.body));
    EXPECT_EQ(bodies, (QStringList{"{\"n\":0}", "{\"n\":1}", "{\"n\":2}", "{\"n\":3}"}));
    EXPECT_TRUE(queue->lock()->isEmpty());
}

TEST_F(ClientDelivery, A_picture_that_comes_after_the_queue_was_emptied_during_a_post_is_sent)
{
    rest->duringPost = [&](const auto &) {
        if (rest->postCount() > 1)
            return;
        queue->lock()->clear();
        insert(Type::ImageData, {{"n", 1}});
    };
    insert(Type::ImageData, {{"n", 0}});
    client.onTimeout();
    client.onTimeout();
    ASSERT_EQ(rest->postCount(), 2);
    EXPECT_EQ(rest->posts().constLast().body, "{\"n\":1}");
    EXPECT_TRUE(queue->lock()->isEmpty());
}

TEST_F(ClientDelivery, A_value_that_goes_with_its_message_may_use_the_queue)
{
    qsizetype waiting = -1;
    rest->duringPost = [&](const auto &) {
        insert(Type::Content,
               {{"value", support::reportingValue([&] { waiting = queue->lock()->count(); })}});
    };
    insert(Type::Content);
    client.onTimeout();
    EXPECT_EQ(waiting, 0);
}

TEST_F(ClientDelivery, Nothing_is_logged_by_a_step)
{
    const auto before = log.lines().size();
    insert(Type::Content);
    rest->answer({7, 0});
    client.onTimeout();
    client.onTimeout();
    client.onTimeout();
    EXPECT_EQ(log.lines().size(), before);
}

TEST_F(ClientDelivery, Stopping_turns_the_timer_off_and_keeps_what_waits)
{
    rest->answer({7});
    insert(Type::Content);
    client.onTimeout();
    client.stop();
    EXPECT_FALSE(client.timer->isActive());
    EXPECT_EQ(queue->lock()->count(), 1);
}

} // namespace
