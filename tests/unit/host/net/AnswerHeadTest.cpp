#include "AnswerHead.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

namespace {

class AnswerHeadTest : public testing::Test
{
protected:
    /// Whether all the lines were taken.
    bool take(std::initializer_list<QByteArrayView> lines)
    {
        return std::all_of(lines.begin(), lines.end(),
                           [this](QByteArrayView line) { return head.take(line); });
    }

    AnswerHead head;
};

} // namespace

TEST_F(AnswerHeadTest, Is_whole_with_its_empty_line)
{
    EXPECT_TRUE(take({"HTTP/1.1 200 OK\r\n", "Content-Length: 0\r\n"}));
    EXPECT_FALSE(head.isWhole());
    EXPECT_EQ(head.judge(CURLE_OK, 200), CURLE_PARTIAL_FILE);
    EXPECT_TRUE(take({"\r\n"}));
    EXPECT_TRUE(head.isWhole());
    EXPECT_EQ(head.judge(CURLE_OK, 200), CURLE_OK);
}

TEST_F(AnswerHeadTest, Begins_anew_behind_an_interim_one)
{
    EXPECT_TRUE(take({"HTTP/1.1 100 Continue\r\n", "\r\n", "HTTP/1.1 204 No Content\r\n"}));
    EXPECT_TRUE(head.isFirstLine());
    EXPECT_FALSE(head.isWhole());
    EXPECT_TRUE(take({"\r\n"}));
    EXPECT_FALSE(head.isFirstLine());
    EXPECT_EQ(head.judge(CURLE_OK, 204), CURLE_OK);
    EXPECT_EQ(head.judge(CURLE_OK, 100), CURLE_UNSUPPORTED_PROTOCOL);
}

TEST_F(AnswerHeadTest, Leaves_the_failures_of_libcurl_as_they_are)
{
    EXPECT_EQ(head.judge(CURLE_COULDNT_CONNECT, 0), CURLE_COULDNT_CONNECT);
    EXPECT_TRUE(take({"HTTP/1.1 200 OK\r\n"}));
    EXPECT_EQ(head.judge(CURLE_OPERATION_TIMEDOUT, 200), CURLE_OPERATION_TIMEDOUT);
}

TEST_F(AnswerHeadTest, Tells_its_status_in_each_version_that_libcurl_reads)
{
    for (const auto *line : {"HTTP/1.1 200 OK\r\n", "HTTP/1.0 200\r\n", "http/1.1  200 OK\n",
                             "HTTP/2 200 \r\n", "HTTP/2.0 200", "HTTP/1.1 200\n"}) {
        SCOPED_TRACE(line);
        head = {};
        EXPECT_TRUE(take({line, "\r\n"}));
        EXPECT_EQ(head.judge(CURLE_OK, 200), CURLE_OK);
    }
}

TEST_F(AnswerHeadTest, Is_none_of_HTTP_without_a_version_or_a_status_of_three_digits)
{
    for (const auto *line : {"HTTP/x 500 Bad\r\n", "HTTP/ 200 OK\r\n", "HTTP/1.1\r\n",
                             "HTTP/3 200 OK\r\n", "HTTP/1.1 20 OK\r\n", "HTTP/1.1 2000 OK\r\n",
                             "HTTP/1.1 099 Low\r\n", "HTTP/1.1 abc\r\n", "HTTP/1.1 200\f\r\n"}) {
        SCOPED_TRACE(line);
        head = {};
        EXPECT_FALSE(take({line}));
        EXPECT_FALSE(take({"\r\n"}));
        EXPECT_FALSE(take({"HTTP/1.1 200 OK\r\n"}));
        EXPECT_EQ(head.judge(CURLE_OK, 200), CURLE_UNSUPPORTED_PROTOCOL);
    }
}

TEST_F(AnswerHeadTest, May_have_64_KiB)
{
    const QByteArray line(AnswerHead::maxBytes, 'x');
    EXPECT_TRUE(take({line}));
    EXPECT_FALSE(head.isTooLarge());
    EXPECT_FALSE(take({"y"}));
    EXPECT_TRUE(head.isTooLarge());
}
