#include "RestClientFixture.h"

#include <support/PrintQt.h>

#include <curl/curl.h>

namespace {

using namespace std::chrono_literals;
using support::ScriptedAnswer;

class RestClientDeadline : public RestClientFixture
{
protected:
    /// Posts with a time-out of a second to a server that never comes to an end.
    void expectEnd(const ScriptedAnswer &answer)
    {
        server.answer(answer);
        client.setRequestTimeout(1);
        EXPECT_EQ(post(), CURLE_OPERATION_TIMEDOUT);
        EXPECT_GE(elapsedMs, 950);
        EXPECT_LT(elapsedMs, 5000);
        EXPECT_EQ(server.requestCount(), 1);

        server.answer(ScriptedAnswer::ok());
        expectDelivery();
    }
};

} // namespace

TEST_F(RestClientDeadline, Ends_waiting_for_an_answer_that_never_comes)
{
    expectEnd(ScriptedAnswer::blackHole());
}

TEST_F(RestClientDeadline, Ends_an_answer_that_comes_byte_by_byte)
{
    expectEnd(ScriptedAnswer::dripping(50ms));
}

TEST_F(RestClientDeadline, Ends_interim_answers_that_keep_coming)
{
    expectEnd(ScriptedAnswer::endlessInterim(50ms));
}

TEST_F(RestClientDeadline, Ends_an_answer_that_is_too_slow)
{
    expectEnd(ScriptedAnswer::slow(1min));
}

TEST_F(RestClientDeadline, Is_that_of_each_post_anew)
{
    client.setRequestTimeout(1);
    server.answer(ScriptedAnswer::slow(400ms));
    for (int i = 0; i < 4; ++i)
        expectDelivery();
}

TEST_F(RestClientDeadline, May_be_set_between_posts)
{
    client.setRequestTimeout(1);
    server.answer(ScriptedAnswer::slow(1500ms));
    EXPECT_EQ(post(), CURLE_OPERATION_TIMEDOUT);
    client.setRequestTimeout(30);
    EXPECT_EQ(post(), 0);
}
