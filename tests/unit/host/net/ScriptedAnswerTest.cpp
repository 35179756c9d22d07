// What an HTTP client makes of the answers; how they are sent is in ScriptedServerTest.cpp.

#include <support/ScriptedServer.h>

#include <support/PrintQt.h>

#include <curl/curl.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace std::chrono_literals;
using support::ScriptedAnswer;

class ScriptedAnswers : public testing::Test
{
protected:
    CURLcode fetch(const ScriptedAnswer &answer, std::chrono::milliseconds timeout = 30s)
    {
        server.answer(answer);
        body.clear();
        header.clear();
        const auto url = server.url().toEncoded();
        curl_easy_setopt(curl.get(), CURLOPT_URL, url.constData());
        curl_easy_setopt(curl.get(), CURLOPT_PROXY, "");
        curl_easy_setopt(curl.get(), CURLOPT_TIMEOUT_MS, static_cast<long>(timeout.count()));
        for (const auto option : {CURLOPT_WRITEFUNCTION, CURLOPT_HEADERFUNCTION})
            curl_easy_setopt(curl.get(), option, &ScriptedAnswers::append);
        curl_easy_setopt(curl.get(), CURLOPT_WRITEDATA, &body);
        curl_easy_setopt(curl.get(), CURLOPT_HEADERDATA, &header);
        return curl_easy_perform(curl.get());
    }

    support::ScriptedServer server;
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> curl{curl_easy_init(), curl_easy_cleanup};
    QByteArray header;
    QByteArray body;

private:
    static std::size_t append(const char *bytes, std::size_t size, std::size_t count,
                              QByteArray *all)
    {
        all->append(bytes, static_cast<qsizetype>(size * count));
        return size * count;
    }
};

} // namespace

TEST_F(ScriptedAnswers, In_chunks_are_whole)
{
    EXPECT_EQ(fetch(ScriptedAnswer::chunked()), CURLE_OK);
    EXPECT_EQ(body, QByteArray("{}"));
    EXPECT_EQ(fetch(ScriptedAnswer::ok()), CURLE_OK); // nothing is left over
    EXPECT_EQ(server.connectionCount(), 1);
}

TEST_F(ScriptedAnswers, Of_compressed_zeros_are_small_unless_they_are_inflated)
{
    constexpr int inflatedBytes = 8 * 1024 * 1024;
    const auto answer = ScriptedAnswer::compressedZeros(inflatedBytes);
    EXPECT_EQ(fetch(answer), CURLE_OK);
    EXPECT_LT(body.size(), inflatedBytes / 500);
    curl_easy_setopt(curl.get(), CURLOPT_ACCEPT_ENCODING, "");
    EXPECT_EQ(fetch(answer), CURLE_OK);
    EXPECT_EQ(body, QByteArray(inflatedBytes, '\0'));
}

TEST_F(ScriptedAnswers, With_a_large_header_are_whole)
{
    constexpr int size = 200'000; // libcurl itself accepts no more than 300 KiB
    EXPECT_EQ(fetch(ScriptedAnswer::largeHeader(size)), CURLE_OK);
    EXPECT_GE(header.size(), size);
    EXPECT_EQ(body, QByteArray("{}"));
}

TEST_F(ScriptedAnswers, With_a_large_body_announce_it_and_send_it)
{
    constexpr int size = 20'000'000;
    EXPECT_EQ(fetch(ScriptedAnswer::largeBody(size)), CURLE_OK);
    EXPECT_TRUE(header.contains("Content-Length: 20000000\r\n"));
    EXPECT_EQ(body, QByteArray(size, 'x'));
}

TEST_F(ScriptedAnswers, With_two_lengths_have_both)
{
    fetch(ScriptedAnswer::twoLengths());
    EXPECT_TRUE(header.contains("Content-Length: 1\r\n"));
    EXPECT_TRUE(header.contains("Content-Length: 2\r\n"));
}

TEST_F(ScriptedAnswers, With_a_dripping_header_never_end)
{
    EXPECT_EQ(fetch(ScriptedAnswer::drippingHeader(1ms), 2s), CURLE_OPERATION_TIMEDOUT);
    EXPECT_EQ(header, QByteArray("HTTP/1.1 200 OK\r\n"));
    EXPECT_GT(server.bytesSent(), qsizetype(qstrlen("HTTP/1.1 200 OK\r\nX-Filler: ")));
}
