// Many clients at once that do not leave by themselves.

#include "Crowd.h"
#include "BusyCrowd.h"
#include "Inbound.h"

#include <campaigns/support/ProcessState.h>

#include <QDeadlineTimer>

#include <atomic>
#include <optional>
#include <vector>

namespace {

using namespace inbound;
using campaign::ProcessState;

/// Beyond HttpServer:maxConnections so many may be about to be closed.
constexpr int beingClosed = 16;

using Crowds = Inbound;

/// A client that asks again and again and takes no answer. Whether the server ends that.
bool isEnded(const Peer &peer)
{
    const auto requests = QByteArray("GET / HTTP/1.1\r\nHost: a\r\n\r\n").repeated(1000);
    const QDeadlineTimer deadline(120s);
    while (!deadline.hasExpired()) {
        peer.sendAll(requests, 1s);
        if (peer.sendSome(requests) < 0)
            return true;
    }
    return false;
}

} // namespace

TEST_F(Crowds, Of_every_kind_let_good_clients_in_and_hold_no_more_than_is_allowed)
{
    constexpr int allowed = 256; // the default of HttpServer:maxConnections
    const int count = campaign::scaled(5000, 600);
    start();
    EXPECT_EQ(answerOfGoodClient(), 200);
    EXPECT_TRUE(support::waitFor([&] { return display.requestCount() == 1; }));
    const auto before = ProcessState::now();

    std::optional<Crowd> crowd;
    const int asked = runBesideGoodClient([&] {
        crowd.emplace(port(), count);
        constexpr int rounds = 10;
        for (int round = 0; round < rounds; ++round) {
            crowd->drip();
            std::this_thread::sleep_for(100ms);
        }
    });
    const auto held = ProcessState::now().descriptors - before.descriptors - crowd->size();
    runBeside([&] { crowd.reset(); });

    campaign::report("clients at once", count);
    campaign::report("connections held", held);
    EXPECT_EQ(goodPictures(), 1 + asked);
    EXPECT_GT(held, allowed / 2); // or it was no crowd
    EXPECT_LE(held, allowed + beingClosed);
    EXPECT_TRUE(support::waitFor(
        [&] { return ProcessState::now().descriptors <= before.descriptors; }, 60s));
}

TEST_F(Crowds, That_are_busy_let_good_clients_in)
{
    constexpr int count = 300; // more than the default of HttpServer:maxConnections
    start();
    EXPECT_EQ(answerOfGoodClient(), 200);

    const BusyCrowd crowd(port(), count);
    runBesideGoodClient(
        [] { std::this_thread::sleep_for(std::chrono::seconds(campaign::scaled(60, 3))); });
    EXPECT_GT(crowd.bytesReceived(), 1'000'000); // or it was not busy
}

TEST_F(Crowds, That_never_take_their_answers_are_outlasted)
{
    const int count = campaign::scaled(32, 3);
    set("HttpServer:maxConnections", count);
    set("HttpServer:answerTimeout", 1);
    start();

    std::atomic<int> ended = 0;
    runBeside([&] {
        constexpr int smallestBuffer = 1;
        std::vector<std::jthread> readers;
        for (int i = 0; i < count; ++i) {
            readers.emplace_back([&] {
                const Peer reader(smallestBuffer);
                reader.connect(port());
                ended += isEnded(reader);
            });
        }
    });
    campaign::report("clients that take no answer", count);
    EXPECT_EQ(ended, count);
    EXPECT_EQ(answerOfGoodClient(), 200);
}
