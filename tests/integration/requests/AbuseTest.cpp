#include "RawRequest.h"
#include "SlowClients.h"

#include <support/MemoryIsOurs.h>
#include <support/RunningEndpoint.h>

#include <QElapsedTimer>
#include <QFile>

#include <unistd.h>

#include <memory>
#include <vector>

namespace {

using namespace std::chrono_literals;
using support::RawClient;

qint64 residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    EXPECT_TRUE(statm.open(QIODevice::ReadOnly));
    return statm.readAll().split(' ').at(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

class Abuse : public RunningEndpoint
{
protected:
    void sendBadRequests(int count)
    {
        sendEach({"nonsense\r\n\r\n",
                  QByteArray::fromStdString(field("Content-Length: 5\r\nContent-Length: 0")),
                  QByteArray::fromStdString(field("X: " + std::string(50'000, 'a'))),
                  QByteArray::fromStdString(field("Content-Length: 99999999")) +
                      QByteArray(100'000, ' ')},
                 count);
    }

    /// Each of these in turn, on a connection of its own, until the server closes it.
    void sendEach(const QByteArrayList &requests, int count)
    {
        constexpr int atOnce = 20;
        for (int sent = 0; sent < count; sent += atOnce) {
            std::vector<std::unique_ptr<RawClient>> clients;
            for (int i = 0; i < atOnce; ++i) {
                clients.push_back(std::make_unique<RawClient>(port()));
                clients.back()->send(requests.at(i % requests.size()));
            }
            for (auto &client : clients)
                EXPECT_TRUE(client->waitForClose());
        }
    }

    /// A chunked body far over the limit, which is read to its end and dropped.
    void sendEndlessBody(int megabytes)
    {
        RawClient client(port());
        client.send(QByteArray::fromStdString(chunks({})));
        const auto chunk = "100000\r\n" + QByteArray(1024 * 1024, 'x') + "\r\n";
        for (int i = 0; i < megabytes; ++i)
            client.send(chunk);
        client.send("0\r\n\r\n");
        EXPECT_EQ(client.answer().status, 413);
    }
};

} // namespace

TEST_F(Abuse, A_thousand_slow_clients_do_not_keep_a_good_one_waiting)
{
    constexpr int slowCount = 1000;
    constexpr qint64 promptMs = 1000;
    start();
    SlowClients slow(port(), slowCount);
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE(round);
        slow.drip();
        ASSERT_EQ(slow.openCount(), slowCount);
        QElapsedTimer timer;
        timer.start();
        EXPECT_TRUE(servesGoodClient());
        EXPECT_LT(timer.elapsed(), promptMs);
        RecordProperty("round" + std::to_string(round) + "Ms", static_cast<int>(timer.elapsed()));
    }
    EXPECT_EQ(delivered, 10);
}

TEST_F(Abuse, Of_thousands_of_bad_requests_and_an_endless_body_leaves_memory_as_it_was)
{
    constexpr qint64 tolerated = 4 * 1024 * 1024;
    start();
    sendBadRequests(200); // so that what is allocated once is there
    sendEndlessBody(10);
    const auto before = residentBytes();
    sendBadRequests(4000);
    sendEndlessBody(100);
    const auto after = residentBytes();
    RecordProperty("grownByKiB", static_cast<int>((after - before) / 1024));
    if (support::memoryIsOurs) {
        EXPECT_LT(after - before, tolerated);
    }
    EXPECT_EQ(delivered, 0);
    EXPECT_TRUE(servesGoodClient());
}

TEST_F(Abuse, Of_requests_with_too_many_arguments_behind_good_ones_leaves_memory_as_it_was)
{
    constexpr qint64 tolerated = 4 * 1024 * 1024; // an exchange that is left behind has 20 KB
    constexpr int count = 1000;
    start();
    const auto pair = RawClient::request("/", "{}") + "GET /?" + QByteArray("a=b&").repeated(4700) +
                      " HTTP/1.1\r\nHost: a\r\n\r\n";
    sendEach({pair}, count / 10); // so that what is allocated once is there
    const auto before = residentBytes();
    sendEach({pair}, count);
    if (support::memoryIsOurs) {
        EXPECT_LT(residentBytes() - before, tolerated);
    }
    EXPECT_EQ(delivered, count + count / 10);
}

TEST_F(Abuse, Fills_the_log_with_no_more_than_a_line_of_each_kind)
{
    start();
    const auto before = log.textsOf(QStringLiteral("httpserver")).size();
    sendBadRequests(100);
    const auto lines = log.textsOf(QStringLiteral("httpserver")).size() - before;
    EXPECT_GE(lines, 1);
    EXPECT_LE(lines, 2); // syntax and size
}

TEST_F(Abuse, By_clients_that_leave_without_their_answers_is_harmless)
{
    constexpr int clientCount = 200;
    start();
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < clientCount; ++i)
        clients.push_back(std::make_unique<RawClient>(port()));
    for (auto &client : clients)
        client->send(RawClient::request("/leaving", "{}"));
    ::usleep(50'000); // without events, so that the requests wait; more or fewer of them is as good
    for (auto &client : clients)
        client->abort();
    EXPECT_TRUE(servesGoodClient());
    EXPECT_LE(delivered, clientCount + 1);
    delivered = 0;
    EXPECT_TRUE(servesGoodClient());
    EXPECT_EQ(delivered, 1);
}
