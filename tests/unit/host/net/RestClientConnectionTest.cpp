#include "RestClientFixture.h"

#include <support/PrintQt.h>
#include <support/Wait.h>

#include <curl/curl.h>

namespace {

using namespace std::chrono_literals;
using support::ScriptedAnswer;

class RestClientConnection : public RestClientFixture
{
protected:
    /// A good answer, and then more of them that nobody has asked for.
    static ScriptedAnswer answersWithoutEnd(std::chrono::milliseconds pause = 20ms)
    {
        auto answer = ScriptedAnswer::ok();
        answer.repeated = answer.bytes;
        answer.pause = pause;
        return answer;
    }
    void waitForAnAnswerTooMany()
    {
        const auto two = 2 * ScriptedAnswer::ok().bytes.size();
        EXPECT_TRUE(support::waitFor([&] { return server.bytesSent() >= two; }));
    }
};

} // namespace

TEST_F(RestClientConnection, Is_kept_for_the_next_posts)
{
    for (int i = 0; i < 5; ++i)
        expectDelivery();
    EXPECT_EQ(server.connectionCount(), 1);
}

TEST_F(RestClientConnection, Is_kept_after_an_answer_that_is_no_success)
{
    server.answerNext({ScriptedAnswer::status(500), ScriptedAnswer::status(302)});
    EXPECT_EQ(post(), 500);
    EXPECT_EQ(post(), 302);
    expectDelivery();
    EXPECT_EQ(server.connectionCount(), 1);
}

TEST_F(RestClientConnection, That_is_kept_and_closed_on_a_request_does_not_send_it_again)
{
    server.answerNext({ScriptedAnswer::ok(), ScriptedAnswer::closed()});
    expectDelivery();

    EXPECT_GT(post("not twice"), 0);
    EXPECT_LT(client.result(), 100);
    EXPECT_EQ(server.requestCount(), 2);

    expectDelivery();
    EXPECT_EQ(server.requests().last().body, QByteArray("{}"));
    EXPECT_EQ(server.requestCount(), 3);
}

TEST_F(RestClientConnection, That_is_closed_each_second_time_delivers_all_others)
{
    QList<ScriptedAnswer> answers;
    for (int i = 0; i < 10; ++i)
        answers += {ScriptedAnswer::ok(), ScriptedAnswer::closed()};
    server.answerNext(answers);
    for (int i = 0; i < 10; ++i) {
        expectDelivery();
        EXPECT_NE(post(), 0);
    }
    EXPECT_EQ(server.requestCount(), 20);
}

TEST_F(RestClientConnection, With_an_answer_too_many_does_not_take_it_for_that_of_the_next_post)
{
    auto twice = ScriptedAnswer::ok();
    twice.bytes += twice.bytes;
    server.answerNext({twice, ScriptedAnswer::status(500)});
    EXPECT_EQ(post(), 0);
    EXPECT_EQ(post(), 500);
    EXPECT_EQ(server.requestCount(), 2);
}

TEST_F(RestClientConnection, With_a_late_answer_too_many_does_not_take_it_for_that_of_the_next_post)
{
    server.answerNext({answersWithoutEnd(), ScriptedAnswer::status(500)});
    EXPECT_EQ(post(), 0);
    waitForAnAnswerTooMany();
    EXPECT_EQ(post(), 500);
    EXPECT_EQ(server.requestCount(), 2);
}

TEST_F(RestClientConnection, With_an_answer_too_many_is_not_gone_back_to_after_another_address)
{
    server.answerNext({answersWithoutEnd(500ms), ScriptedAnswer::status(500)});
    EXPECT_EQ(post(), 0);
    const support::ScriptedServer other;
    EXPECT_EQ(client.post(other.url(), "{}", {}), 0);
    waitForAnAnswerTooMany();
    EXPECT_EQ(post(), 500);
    EXPECT_EQ(server.requestCount(), 2);
}

TEST_F(RestClientConnection, Is_made_anew_when_the_server_was_restarted)
{
    for (int i = 0; i < 3; ++i) {
        expectDelivery();
        server.goDown();
        server.comeUp();
    }
    expectDelivery();
    EXPECT_EQ(server.connectionCount(), 4);
}

TEST_F(RestClientConnection, Is_refused_while_the_server_is_down_and_made_when_it_is_back)
{
    server.goDown();
    EXPECT_EQ(post(), CURLE_COULDNT_CONNECT);
    EXPECT_EQ(post(), CURLE_COULDNT_CONNECT);
    server.comeUp();
    expectDelivery();

    server.goDown();
    EXPECT_EQ(post(), CURLE_COULDNT_CONNECT);
    EXPECT_EQ(server.requestCount(), 1);
}

TEST_F(RestClientConnection, Belongs_to_one_client)
{
    expectDelivery();
    RestClient other;
    EXPECT_EQ(other.post(server.url(), "{}", {}), 0);
    EXPECT_EQ(server.requests().last().connection, 1);
}

TEST_F(RestClientConnection, Changes_with_the_address)
{
    const support::ScriptedServer second;
    EXPECT_EQ(post(), 0);
    EXPECT_EQ(client.post(second.url(), "{}", {}), 0);
    EXPECT_EQ(post(), 0);
    EXPECT_EQ(server.requestCount(), 2);
    EXPECT_EQ(second.requestCount(), 1);
}
