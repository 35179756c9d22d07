#include "RestClientFixture.h"

#include <support/PrintQt.h>

#include <curl/curl.h>

namespace {

using support::ScriptedAnswer;

/// What the peer may have sent until it was cut off, with what the system buffers on the way.
constexpr qint64 readAndBuffered = 32 * 1024 * 1024;

struct Row
{
    const char *name;
    ScriptedAnswer answer;
    int result;
};

std::ostream &operator<<(std::ostream &out, const Row &row)
{
    return out << row.name;
}

class RestClientAnswers : public RestClientFixture, public testing::WithParamInterface<Row>
{
};

/// A whole answer with a head of that size.
ScriptedAnswer withHeadOf(qsizetype bytes)
{
    const QByteArray begin = "HTTP/1.1 200 OK\r\nContent-Length: 0\r\nX: ";
    return {.bytes = begin + QByteArray(bytes - begin.size() - 4, 'x') + "\r\n\r\n"};
}

/// An answer without a body that begins with that line.
ScriptedAnswer head(const QByteArray &firstLine)
{
    return {.bytes = firstLine + "\r\nContent-Length: 0\r\n\r\n"};
}

const Row rows[] = {
    {"a_200", ScriptedAnswer::ok(), 0},
    {"a_200_with_a_large_body", ScriptedAnswer::ok(QByteArray(1024 * 1024, 'x')), 0},
    {"a_201", ScriptedAnswer::status(201), 0},
    {"a_204_without_a_body", ScriptedAnswer::status(204), 0},
    {"a_299", ScriptedAnswer::status(299), 0},
    {"a_redirect_that_is_not_followed", ScriptedAnswer::status(302), 302},
    {"a_redirect_that_keeps_the_method", ScriptedAnswer::status(307), 307},
    {"a_300", ScriptedAnswer::status(300), 300},
    {"a_404", ScriptedAnswer::status(404), 404},
    {"a_500", ScriptedAnswer::status(500), 500},
    {"a_200_of_the_old_version", head("HTTP/1.0 200 OK"), 0},
    {"a_200_without_a_reason", head("HTTP/1.1 200"), 0},
    {"a_200_in_small_letters", head("http/1.1 200 ok"), 0},
    {"a_200_of_a_newer_version", head("HTTP/2 200"), 0},
    {"a_200_after_many_spaces", head("HTTP/1.1   200 OK"), 0},
    {"a_200_with_a_tabulator_behind_it", head("HTTP/1.1 200\tOK"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_200_with_a_form_feed_behind_it", head("HTTP/1.1 200\f"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_200_with_a_tabulator_before_it", head("HTTP/1.1 \t200 OK"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_500_of_no_version", head("HTTP/x 500 Bad"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_500_of_no_version_in_small_letters", head("http/x 500"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_400_with_something_behind_it", head("HTTP/1.1 400OK"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_status_with_a_sign", head("HTTP/2 +20"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_302_of_a_broken_version", head("HTTP/1.x 302 Found"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_302_of_half_a_version", head("HTTP/1 302 Found"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_302_of_a_newer_version", head("HTTP/2.0 302 Found"), 302},
    {"a_200_of_no_version", head("HTTP/x 200 OK"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_first_line_without_a_status", head("HTTP/garbage"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_status_of_0", head("HTTP/2 0"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_status_of_000", head("HTTP/2 000"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_status_of_two_digits", head("HTTP/2 20 OK"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_status_of_four_digits", head("HTTP/2 2000"), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_status_that_is_200_after_an_overflow", head("HTTP/2 4294967496"),
     CURLE_UNSUPPORTED_PROTOCOL},
    {"a_second_first_line", head("HTTP/1.1 200 OK\r\nHTTP/1.1 500: No"),
     CURLE_UNSUPPORTED_PROTOCOL},
    {"a_500_among_the_fields", head("HTTP/1.1 200 OK\r\nHTTP/1.1 500 Error: no"),
     CURLE_UNSUPPORTED_PROTOCOL},
    {"garbage", ScriptedAnswer::garbage(), CURLE_UNSUPPORTED_PROTOCOL},
    {"a_closed_connection", ScriptedAnswer::closed(), CURLE_GOT_NOTHING},
    {"a_truncated_answer", ScriptedAnswer::truncated(), CURLE_PARTIAL_FILE},
    {"a_head_cut_after_its_first_line",
     {.bytes = "HTTP/1.1 200 OK\r\n", .closes = true},
     CURLE_PARTIAL_FILE},
    {"a_head_cut_after_a_field",
     {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n", .closes = true},
     CURLE_PARTIAL_FILE},
    {"a_head_cut_within_a_field",
     {.bytes = "HTTP/1.1 200 OK\r\nContent-L", .closes = true},
     CURLE_PARTIAL_FILE},
    {"a_head_cut_after_an_interim_one",
     {.bytes = "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\n", .closes = true},
     CURLE_PARTIAL_FILE},
    {"a_200_after_an_interim_one",
     {.bytes = "HTTP/1.1 103 Hints\r\nLink: a\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n"},
     0},
    {"a_200_with_bare_line_feeds", {.bytes = "HTTP/1.1 200 OK\nContent-Length: 0\n\n"}, 0},
    {"a_chunked_200_with_trailers",
     {.bytes = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\nx\r\n0\r\nA: b\r\n\r\n"},
     0},
    {"a_body_beyond_the_limit", ScriptedAnswer::ok(QByteArray(1024 * 1024 + 1, 'x')),
     CURLE_WRITE_ERROR},
    {"a_head_of_the_limit", withHeadOf(64 * 1024), 0},
    {"a_head_beyond_the_limit", withHeadOf(64 * 1024 + 1), CURLE_WRITE_ERROR},
};

class RestClientFloods : public RestClientFixture
{
protected:
    /// Posts with a long time-out and expects to be rid of the answer long before it.
    void expectCutOff(const ScriptedAnswer &answer)
    {
        server.answer(answer);
        client.setRequestTimeout(60);
        EXPECT_EQ(post(), CURLE_WRITE_ERROR);
        EXPECT_LT(elapsedMs, 20'000);
        EXPECT_LT(server.bytesSent(), readAndBuffered);
        EXPECT_EQ(server.requestCount(), 1);

        server.answer(ScriptedAnswer::ok());
        expectDelivery();
    }
};

} // namespace

TEST_P(RestClientAnswers, Decide_the_result)
{
    client.setRequestTimeout(20);
    server.answer(GetParam().answer);
    EXPECT_EQ(post(), GetParam().result);
    EXPECT_EQ(server.requestCount(), 1);
    EXPECT_EQ(server.connectionCount(), 1);

    server.answer(ScriptedAnswer::ok());
    expectDelivery();
}

INSTANTIATE_TEST_SUITE_P(, RestClientAnswers, testing::ValuesIn(rows),
                         [](const auto &row) { return row.param.name; });

TEST_F(RestClientFloods, Of_body_are_cut_off)
{
    expectCutOff(ScriptedAnswer::endlessBody());
}

TEST_F(RestClientFloods, Of_header_fields_are_cut_off)
{
    expectCutOff(ScriptedAnswer::endlessHeader());
}

TEST_F(RestClientFloods, Of_interim_answers_are_cut_off)
{
    expectCutOff(ScriptedAnswer::endlessInterim(std::chrono::milliseconds(0)));
}
