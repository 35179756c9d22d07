// The plug-in is loaded, started, used, ended and destroyed again and again, in each state that its
// client can be in: each end takes a second at most, and nothing is left of it.

#include "HostProcess.h"

#include <support/Campaign.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <list>

using namespace std::chrono_literals;

namespace {

/// What the time of an end may be: in a campaign what is promised; in the short form, on a machine
/// that is busy or under a sanitizer, still far less than the 20 s that a post may take there.
const auto longestEnd = campaign::scaled(1100, 10'000) * 1ms;
const qint64 mostGrowthMiB = campaign::scaled(2, 64); // sanitizers keep freed memory

/// How often a plug-in ends in a state of its client, and over how many processes at once that is
/// spread: some ends take a second.
struct Share
{
    const char *state;
    int lives;
    int briefLives;
    int processes;
};

void PrintTo(const Share &share, std::ostream *out)
{
    *out << share.state;
}

class Ends : public testing::TestWithParam<Share>
{
protected:
    Ends()
    {
        const auto &share = GetParam();
        const int processes = std::min(share.processes, campaign::scaled(share.processes, 2));
        const int lives = campaign::scaled(share.lives, share.briefLives) / processes;
        for (int i = 0; i < processes; ++i) {
            const auto seed = campaign::seed() + static_cast<quint32>(i);
            hosts.emplace_back(QStringList{QString::fromLatin1(share.state), "unload",
                                           QString::number(lives), QString::number(seed)});
        }
        for (auto &host : hosts) {
            host.expectToEndWell(campaign::scaled(30, 1) * 1min);
            for (const auto &end : host.numbers("end"))
                ends.push_back(end.constFirst() * 1us);
        }
        std::sort(ends.begin(), ends.end());
    }

    void reportEnd(const char *what, int percent) const
    {
        const auto rank = (ends.size() - 1) * static_cast<std::size_t>(percent) / 100;
        campaign::report(what, static_cast<double>(ends[rank].count()) / 1000, "ms");
    }

    std::list<HostProcess> hosts;
    std::vector<std::chrono::microseconds> ends; // in ascending order
};

} // namespace

TEST_P(Ends, Each_takes_a_second_at_most_and_leaves_nothing)
{
    const auto expected = campaign::scaled(GetParam().lives, GetParam().briefLives);
    ASSERT_EQ(std::ssize(ends), expected);
    campaign::report("ends", expected);
    reportEnd("median end", 50);
    reportEnd("end at the 99th percentile", 99);
    reportEnd("longest end", 100);
    EXPECT_LE(ends.back(), longestEnd);

    qint64 growth = 0;
    for (const auto &host : hosts) {
        for (const auto &what : {"threads", "descriptors"}) {
            const auto held = host.numbers(what).value(0);
            ASSERT_EQ(held.size(), 2) << what;
            EXPECT_EQ(held[1], held[0]) << what;
        }
        const auto resident = host.numbers("resident").value(0);
        ASSERT_EQ(resident.size(), 2);
        growth = std::max(growth, resident[1] - resident[0]);
    }
    campaign::report("largest growth of a process", static_cast<double>(growth) / 1024, "KiB");
    EXPECT_LE(growth, mostGrowthMiB * 1024 * 1024);
}

INSTANTIATE_TEST_SUITE_P(
    States, Ends,
    testing::Values(Share{"never-started", 2000, 10, 2}, Share{"starting", 1000, 6, 2},
                    Share{"idle", 1500, 6, 2}, Share{"waiting", 1500, 6, 2},
                    Share{"retrying", 1500, 6, 2}, Share{"posting", 1500, 6, 2},
                    Share{"subscribing", 1000, 6, 2}, Share{"encrypting", 500, 2, 2},
                    Share{"posting-in-vain", 500, 2, 10}, Share{"connecting", 500, 2, 10}),
    [](const testing::TestParamInfo<Share> &tested) {
        std::string name = tested.param.state;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });
