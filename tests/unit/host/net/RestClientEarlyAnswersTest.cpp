// Answers that come before the message has been sent.

#include <RestClient.h>

#include <support/LoopbackServer.h>
#include <support/Wait.h>

#include <QList>
#include <QUrl>

#include <gtest/gtest.h>

#include <curl/curl.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <optional>

namespace {

using namespace std::chrono_literals;

constexpr qsizetype largerThanAnyBuffer = 32 * 1024 * 1024;
const QByteArray kept = "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n";
const QByteArray closing = "HTTP/1.1 200 OK\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";

class RestClientEarlyAnswers : public testing::Test
{
protected:
    /// A server that answers each head and reads the message after that: the first one with the
    /// first of these, and so on, and all further ones with the last.
    void answer(const QList<QByteArray> &each)
    {
        server.emplace([=, this](int socket, int) {
            QByteArray received;
            while (receive(socket, received)) {
                const auto headEnd = received.indexOf("\r\n\r\n");
                if (headEnd < 0)
                    continue;
                const auto &bytes = each.at(std::min<qsizetype>(requests, each.size() - 1));
                (void)send(socket, bytes.constData(), static_cast<std::size_t>(bytes.size()),
                           MSG_NOSIGNAL);
                const auto size = headEnd + 4 + contentLength(received);
                while (received.size() < size && receive(socket, received)) {
                }
                received.remove(0, size);
                ++requests;
            }
        });
    }

    int post(qsizetype bytes)
    {
        client.setRequestTimeout(20);
        const QUrl url(QStringLiteral("http://127.0.0.1:%1/image").arg(server->port()));
        return client.post(url, QByteArray(bytes, 'x'), {});
    }

    std::atomic<int> requests = 0; // that were read as a whole
    std::optional<support::LoopbackServer> server;
    RestClient client;

private:
    static bool receive(int socket, QByteArray &received)
    {
        std::array<char, 65'536> buffer{};
        const auto count = recv(socket, buffer.data(), buffer.size(), 0);
        if (count > 0)
            received.append(buffer.data(), count);
        return count > 0;
    }

    static qsizetype contentLength(const QByteArray &head)
    {
        const QByteArray name = "Content-Length: ";
        const auto begin = head.indexOf(name) + name.size();
        return head.mid(begin, head.indexOf('\r', begin) - begin).toLongLong();
    }
};

} // namespace

TEST_F(RestClientEarlyAnswers, Are_deliveries_if_the_message_is_read_after_them)
{
    answer({kept});
    EXPECT_EQ(post(largerThanAnyBuffer), 0);
    EXPECT_TRUE(support::waitFor([&] { return requests == 1; }));
}

TEST_F(RestClientEarlyAnswers, Are_no_deliveries_if_the_connection_ends_with_them)
{
    answer({closing});
    EXPECT_EQ(post(largerThanAnyBuffer), CURLE_SEND_ERROR);
}

TEST_F(RestClientEarlyAnswers, Are_taken_on_a_kept_connection_for_those_of_the_request_before)
{
    answer({kept});
    EXPECT_EQ(post(10), 0);
    EXPECT_EQ(post(largerThanAnyBuffer), CURLE_SEND_ERROR);
    EXPECT_EQ(post(largerThanAnyBuffer), 0);
    EXPECT_EQ(server->connectionCount(), 2);
}

TEST_F(RestClientEarlyAnswers, That_refuse_keep_their_status_on_a_kept_connection)
{
    answer({kept, "HTTP/1.1 413 Content Too Large\r\nContent-Length: 0\r\n\r\n"});
    EXPECT_EQ(post(10), 0);
    EXPECT_EQ(post(largerThanAnyBuffer), 413);
}
