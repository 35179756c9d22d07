#include "AdServiceFixture.h"

#include "Subscriber.h"

#include <QTcpSocket>

#include <optional>

using namespace std::chrono_literals;
using support::RawClient;

namespace {

constexpr auto endTime = 2s; // more than enough for what ends at once

/// A service that is asked, and then ended while the answer is still under way.
class AdServiceShutdown : public AdServiceFixture
{
protected:
    /// Returns what arrived until the end.
    QByteArray endAfter(const QByteArray &request,
                        const std::function<bool(RawClient &)> &isUnderWay) const
    {
        bool wasUnderWay = false;
        bool isClosed = false;
        QByteArray received;
        std::chrono::steady_clock::duration time{};
        printed([&] {
            std::optional<AdService> service(options);
            RawClient client(service->port());
            client.send(request);
            wasUnderWay = support::waitFor([&] { return isUnderWay(client); });

            const auto begin = std::chrono::steady_clock::now();
            service.reset();
            time = std::chrono::steady_clock::now() - begin;
            isClosed = client.waitForClose();
            received = client.received();
        });
        EXPECT_TRUE(wasUnderWay);
        EXPECT_LT(time, endTime);
        EXPECT_TRUE(isClosed);
        return received;
    }

    static bool isStillOpen(RawClient &client)
    {
        support::letPass(50ms);
        return client.isConnected();
    }

    const QByteArray subscription = RawClient::request("/", Subscriber().request());
};

} // namespace

TEST_F(AdServiceShutdown, Ends_a_stream_that_runs)
{
    options.frameTime = 1h;
    const auto received = endAfter(get("/streams/1?key=key"), [](RawClient &client) {
        return client.received().endsWith("\r\n--picture\r\n");
    });
    EXPECT_EQ(received.count("Content-Type: image/jpeg"), 1);
}

TEST_F(AdServiceShutdown, Ends_an_answer_that_was_to_come_later)
{
    options.answerAfter = 1h;
    EXPECT_EQ(endAfter(subscription, &isStillOpen), "");
}

TEST_F(AdServiceShutdown, Ends_a_request_that_is_never_answered)
{
    options.fault = Fault::NoAnswer;
    EXPECT_EQ(endAfter(subscription, &isStillOpen), "");
}

TEST_F(AdServiceShutdown, Ends_an_answer_without_end)
{
    options.fault = Fault::Endless;
    const auto received = endAfter(
        subscription, [](RawClient &client) { return client.received().size() > 2'000'000; });
    EXPECT_TRUE(received.contains("\r\nX-PK: "));
}

TEST_F(AdServiceShutdown, Ends_an_answer_that_nobody_reads)
{
    options.fault = Fault::Endless;
    bool isConnected = false;
    std::chrono::steady_clock::duration time{};
    printed([&] {
        std::optional<AdService> service(options);
        QTcpSocket socket;
        socket.setReadBufferSize(1);
        socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(service->port()));
        isConnected = socket.waitForConnected();
        socket.write(subscription);
        support::letPass(300ms); // until the system's buffers are full
        const auto begin = std::chrono::steady_clock::now();
        service.reset();
        time = std::chrono::steady_clock::now() - begin;
    });
    EXPECT_TRUE(isConnected);
    EXPECT_LT(time, endTime);
}
