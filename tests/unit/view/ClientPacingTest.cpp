// Deliveries in time. A coarse timer may be off by 5 %.

#include "ClientFixture.h"

#include <support/RecordingDisplay.h>

#include <algorithm>

namespace {

using namespace std::chrono_literals;
using support::waitFor;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto interval = 100ms;
constexpr Milliseconds shortestGap = interval * 0.95 - 1ms;

std::vector<Milliseconds> gaps(const QList<support::RecordingRestClient::Post> &posts)
{
    std::vector<Milliseconds> gaps;
    for (qsizetype i = 1; i < posts.size(); ++i)
        gaps.emplace_back(posts[i].at - posts[i - 1].at);
    return gaps;
}

class ClientPacing : public ClientFixture
{
protected:
    ClientPacing() { start(static_cast<int>(interval.count())); }

    /// No post came early; the quickest was in time, the others may have waited for a busy machine.
    void expectOnePostEachInterval()
    {
        const auto measured = gaps(rest->posts());
        ASSERT_FALSE(measured.empty());
        for (const auto gap : measured)
            EXPECT_GE(gap.count(), shortestGap.count());
        EXPECT_LT(std::min_element(measured.begin(), measured.end())->count(), 150);
    }
};

TEST_F(ClientPacing, Several_messages_go_out_one_an_interval_the_lowest_type_first)
{
    for (const Type type : {Type::PaymentDraft, Type::Content, Type::PriceList, Type::QrPayment,
                            Type::UpdateDocument, Type::Configure})
        insert(type);
    client.hasMessage();
    EXPECT_EQ(rest->postCount(), 1); // the first at once
    ASSERT_TRUE(waitFor([&] { return queue->lock()->isEmpty(); }));
    EXPECT_EQ(rest->paths(), (QStringList{"/configure", "/updateDocument", "/qrPayment",
                                          "/priceList", "/content", "/paymentdraft"}));
    expectOnePostEachInterval();
}

TEST_F(ClientPacing, The_client_goes_idle_after_the_last_message)
{
    insert(Type::Content);
    client.hasMessage();
    EXPECT_TRUE(client.timer->isActive());
    ASSERT_TRUE(waitFor([&] { return !client.timer->isActive(); }));
    QCoreApplication::processEvents(); // the queued tick, which finds nothing
    EXPECT_FALSE(client.timer->isActive());
    EXPECT_EQ(rest->postCount(), 1);

    insert(Type::Content);
    client.hasMessage();
    EXPECT_EQ(rest->postCount(), 2); // at once again
}

TEST_F(ClientPacing, The_same_message_is_tried_each_interval_until_it_is_accepted)
{
    rest->answer({7, 7, 28, 500, 0});
    insert(Type::UpdateDocument, {{"sum", 1}});
    insert(Type::Content);
    client.hasMessage();
    ASSERT_TRUE(waitFor([&] { return queue->lock()->isEmpty(); }));
    const QString update = "/updateDocument";
    EXPECT_EQ(rest->paths(), (QStringList{update, update, update, update, update, "/content"}));
    expectOnePostEachInterval();
}

TEST_F(ClientPacing, A_newer_message_takes_the_place_of_the_one_being_retried)
{
    rest->answer({7});
    insert(Type::UpdateDocument, {{"sum", 1}});
    client.hasMessage();
    insert(Type::UpdateDocument, {{"sum", 2}});
    rest->answer({0});
    ASSERT_TRUE(waitFor([&] { return queue->lock()->isEmpty(); }));
    EXPECT_EQ(rest->postCount(), 2);
    EXPECT_EQ(rest->posts().constLast().body, QByteArray("{\"sum\":2}"));
}

TEST_F(ClientPacing, A_more_urgent_message_overtakes_the_one_being_retried)
{
    rest->answer({7});
    insert(Type::Content);
    client.hasMessage();
    insert(Type::QrPayment);
    rest->answer({0});
    ASSERT_TRUE(waitFor([&] { return queue->lock()->isEmpty(); }));
    EXPECT_EQ(rest->paths(), (QStringList{"/content", "/qrPayment", "/content"}));
}

TEST_F(ClientPacing, A_stopped_client_makes_no_further_try)
{
    rest->answer({7});
    insert(Type::Content);
    client.hasMessage();
    client.stop();
    support::letPass(3 * interval);
    EXPECT_EQ(rest->postCount(), 1);
}

/// Counts its ticks instead of delivering.
class CountingClient : public ProbedClient
{
public:
    void onTimeout() override { ++ticks; }
    int ticks = 0;
};

TEST(ClientTick, It_is_an_event_of_its_own_and_reaches_the_virtual_function)
{
    CountingClient client;
    ASSERT_TRUE(QMetaObject::invokeMethod(client.timer, "timeout", Qt::DirectConnection));
    EXPECT_EQ(client.ticks, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(client.ticks, 1);
}

/// The real REST client and a display behind a real port.
class ClientAndDisplay : public testing::Test
{
protected:
    using Type = view::Message::Type;
    using Queue = Locker<view::Messages, QMutex>;

    ClientAndDisplay()
    {
        host.config().setValue("ViewConnector:server", display.url() + "/ignored");
        host.config().setValue("ViewConnector:interval", 20);
        client.setMessages(queue);
        client.onStart();
    }

    support::LogCapture log;
    support::FreshSingletons host;
    support::RecordingDisplay display;
    const QSharedPointer<Queue> queue = QSharedPointer<Queue>::create();
    ProbedClient client;
};

TEST_F(ClientAndDisplay, A_display_that_was_down_gets_the_message_once_it_is_back)
{
    display.goDown();
    queue->lock()->insert({Type::UpdateDocument, {{"sum", 5}}});
    queue->lock()->insert({Type::Content, {{"hide", true}}});
    client.hasMessage();
    EXPECT_EQ(queue->lock()->count(), 2);
    EXPECT_TRUE(display.requests().isEmpty());

    display.comeBack();
    ASSERT_TRUE(waitFor([&] { return queue->lock()->isEmpty(); }));
    EXPECT_EQ(display.paths(), (QStringList{"/updateDocument", "/content"}));
    EXPECT_EQ(display.requests().constFirst().body, (QJsonObject{{"sum", 5}}));
}

TEST_F(ClientAndDisplay, A_message_that_the_display_refuses_is_sent_again)
{
    display.setStatus(503);
    queue->lock()->insert({Type::Content, {{"hide", true}}});
    client.hasMessage();
    ASSERT_TRUE(waitFor([&] { return display.requests().size() == 3; }));
    EXPECT_EQ(queue->lock()->count(), 1);

    display.setStatus(204);
    ASSERT_TRUE(waitFor([&] { return queue->lock()->isEmpty(); }));
    EXPECT_EQ(display.requests().constLast().body, (QJsonObject{{"hide", true}}));
}

TEST_F(ClientAndDisplay, The_request_is_a_POST_of_JSON_that_asks_for_JSON)
{
    queue->lock()->insert({Type::Content, {{"data", "Чай"}}});
    client.hasMessage();
    ASSERT_EQ(display.requests().size(), 1);
    const auto request = display.requests().constFirst();
    EXPECT_EQ(request.header.method(), "POST");
    EXPECT_EQ(request.header.value("Accept"), "application/json");
    EXPECT_EQ(request.header.value("Content-Type"), "application/json");
    EXPECT_EQ(request.content, QByteArray("{\"data\":\"Чай\"}"));
}

} // namespace
