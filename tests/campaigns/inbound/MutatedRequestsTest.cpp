// A great many requests, half of them malformed, on many connections at once.

#include "Attack.h"
#include "Inbound.h"

#include <campaigns/support/ProcessState.h>

#include <malloc.h>

#include <set>

namespace {

using namespace inbound;
using campaign::ProcessState;

/// What the process has, without what the allocator keeps for the next megabyte.
ProcessState settled()
{
    ::malloc_trim(0);
    return ProcessState::now();
}

constexpr qint64 tolerated = 16 * 1024 * 1024;

class MutatedRequests : public Inbound
{
protected:
    void attack(const Attack::Plan &plan)
    {
        Attack attack(mutants, plan);
        runBeside([&] { attack.run(); });
        ASSERT_EQ(attack.fault(), "");
        EXPECT_EQ(attack.soFar(), plan.count);
        for (const auto &[status, count] : attack.statuses())
            statuses[status] += count;
    }

    void reportStatuses() const
    {
        for (const auto &[status, count] : statuses)
            campaign::report(status == 0 ? "ends without an answer"
                                         : "answers of " + std::to_string(status),
                             count);
    }

    const Mutants mutants{campaign::seed()};
    std::map<int, int> statuses;
};

} // namespace

TEST_F(MutatedRequests, Are_answered_or_closed_while_good_ones_are_answered_as_ever)
{
    const int count = campaign::scaled(1'000'000, 4000);
    const int warmUp = count / 10; // so that what is allocated once is there
    start();
    attack({.port = port(), .count = warmUp, .deadline = 120s});
    const auto before = settled();

    GoodClient good(port());
    QElapsedTimer timer;
    timer.start();
    attack({.port = port(), .first = warmUp, .count = count - warmUp, .deadline = 120s});
    const auto seconds = static_cast<double>(timer.elapsed()) / 1000;
    runBeside([&] { good.end(); });

    EXPECT_TRUE(servesGoodClient());
    const auto after = settled();
    campaign::report("requests", count);
    campaign::report("after the warm-up", seconds, "s");
    reportStatuses();
    campaign::report("good requests", good.asked());
    campaign::report("worst answer to one", static_cast<double>(good.worst().count()), "ms");
    campaign::report("memory before", static_cast<double>(before.residentBytes) / 1048576, "MiB");
    campaign::report("memory after", static_cast<double>(after.residentBytes) / 1048576, "MiB");
    EXPECT_EQ(good.missed(), 0);
    EXPECT_EQ(goodPictures(), good.asked());
    EXPECT_LE(good.worst(), promptly());
    EXPECT_LE(after.threads, before.threads);
    if (support::memoryIsOurs) {
        EXPECT_LT(after.residentBytes - before.residentBytes, tolerated);
    }
}

TEST_F(MutatedRequests, Whose_clients_wait_for_ever_are_closed_within_the_time_outs)
{
    for (const auto *key : {"HttpServer:idleTimeout", "HttpServer:headerTimeout",
                            "HttpServer:bodyTimeout", "HttpServer:answerTimeout"})
        set(key, 1);
    constexpr auto allInARow = 4s;
    start();
    attack({.port = port(),
            .count = campaign::scaled(10'000, 200),
            .connections = 200,
            .clientsWait = true,
            .deadline = allInARow + promptly()});
    reportStatuses();
    EXPECT_EQ(answerOfGoodClient(), 200);
}

TEST_F(MutatedRequests, Are_the_same_with_the_same_seed_and_others_with_another)
{
    constexpr int sample = 2000;
    const Mutants same(mutants.seed());
    const Mutants other(mutants.seed() + 1);
    std::set<QByteArray> different;
    int equalToOthers = 0;
    for (int number = 0; number < sample; ++number) {
        const auto bytes = mutants.at(number).bytes;
        EXPECT_EQ(bytes, same.at(number).bytes);
        equalToOthers += bytes == other.at(number).bytes;
        different.insert(bytes);
    }
    EXPECT_LT(equalToOthers, sample / 20);
    EXPECT_GT(different.size(), sample * 9U / 10);
}
