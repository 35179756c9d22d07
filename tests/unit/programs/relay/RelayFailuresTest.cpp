#include "RelayFixture.h"

namespace {

using namespace std::chrono_literals;

class RelayFailures : public RelayFixture
{
protected:
    /// The last exchange must have had no answer.
    void expectFailure(qsizetype count) const
    {
        ASSERT_EQ(exchanges.size(), count);
        EXPECT_EQ(exchanges.constLast().status, 0);
        EXPECT_NE(exchanges.constLast().error, "");
        EXPECT_EQ(exchanges.constLast().answerBody, "");
    }

    const QByteArray request = RawClient::request("/content", "{\"a\":1}");
};

} // namespace

TEST_F(RelayFailures, A_target_that_is_away_closes_the_clients_connection)
{
    target.goDown();
    expectNoAnswer(request);
    expectFailure(1);
    EXPECT_EQ(exchanges[0].requestBody, "{\"a\":1}");
}

TEST_F(RelayFailures, A_target_that_comes_back_is_found)
{
    target.goDown();
    expectNoAnswer(request);
    target.comeUp();
    EXPECT_EQ(send(request).status, 200);
    target.goDown();
    expectNoAnswer(request);
    target.comeUp();
    EXPECT_EQ(send(request).status, 200);
    EXPECT_EQ(exchanges.size(), 4);
    EXPECT_EQ(target.requestCount(), 2);
}

TEST_F(RelayFailures, A_request_reaches_the_target_once_whatever_that_does)
{
    const QByteArray get = "GET / HTTP/1.1\r\nHost: localhost\r\n\r\n";
    const QByteArray head = "HEAD / HTTP/1.1\r\nHost: localhost\r\n\r\n";
    qsizetype count = 0;
    for (const auto &each : {request, RawClient::request("/", ""), get, head}) {
        for (const auto &answer : {ScriptedAnswer::closed(), ScriptedAnswer::garbage()}) {
            target.answer(answer);
            expectNoAnswer(each);
            expectFailure(++count);
            EXPECT_EQ(target.requestCount(), count);
        }
    }
    // An arrival after the client was told would be a second one, too.
    target.answer(ScriptedAnswer::ok());
    EXPECT_EQ(send(request).status, 200);
    EXPECT_EQ(target.requestCount(), count + 1);
}

TEST_F(RelayFailures, An_answer_that_breaks_off_is_none)
{
    target.answer(ScriptedAnswer::truncated());
    expectNoAnswer(request);
    expectFailure(1);
    EXPECT_EQ(target.requestCount(), 1);
}

TEST_F(RelayFailures, A_target_that_never_answers_is_given_up_in_the_end)
{
    for (const auto &answer : {ScriptedAnswer::blackHole(), ScriptedAnswer::dripping(5ms),
                               ScriptedAnswer::endlessInterim(5ms)}) {
        start(200ms);
        exchanges.clear();
        target.answer(answer);
        expectNoAnswer(request);
        expectFailure(1);
        EXPECT_GE(exchanges[0].durationMs, 199);
        EXPECT_LT(exchanges[0].durationMs, 5000);
    }
}

TEST_F(RelayFailures, A_request_whose_client_has_gone_is_given_up)
{
    target.answer(ScriptedAnswer::blackHole());
    RawClient client(relay->port());
    client.send(request);
    ASSERT_TRUE(support::waitFor([&] { return target.requestCount() == 1; }));
    client.abort();
    ASSERT_TRUE(support::waitFor([&] { return !exchanges.isEmpty(); }));
    expectFailure(1);
    EXPECT_EQ(exchanges[0].error, "the client has gone");
    target.answer(ScriptedAnswer::ok());
    EXPECT_EQ(send(request).status, 200);
}

TEST_F(RelayFailures, An_answer_without_an_end_is_given_up)
{
    constexpr qint64 bound = 64 * 1024 * 1024; // what is kept, and what is on its way
    for (const auto &answer : {ScriptedAnswer::endlessBody(), ScriptedAnswer::endlessHeader()}) {
        exchanges.clear();
        const auto before = target.bytesSent();
        target.answer(answer);
        expectNoAnswer(request);
        expectFailure(1);
        EXPECT_LT(target.bytesSent() - before, bound);
        EXPECT_EQ(exchanges[0].error, "the answer is too large");
    }
}

TEST_F(RelayFailures, The_end_of_the_relay_closes_the_connections)
{
    target.answer(ScriptedAnswer::blackHole());
    RawClient client(relay->port());
    client.send(request);
    ASSERT_TRUE(support::waitFor([&] { return target.requestCount() == 1; }));
    relay.reset();
    EXPECT_TRUE(client.waitForClose());
    EXPECT_EQ(client.received(), QByteArray());
    EXPECT_TRUE(exchanges.isEmpty());
}
