#include "Outage.h"

#include <campaigns/support/Campaign.h>
#include <campaigns/support/ProcessState.h>
#include <support/MemoryIsOurs.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <algorithm>
#include <map>

namespace {

using namespace std::chrono_literals;
using campaign::ProcessState;
using support::ScriptedAnswer;

constexpr qint64 megabyte = 1024 * 1024;

/// Outages of one kind, one after the other.
class Outages : public Outage
{
protected:
    void playMany(const Fault &fault, const ScriptedAnswer &healthy)
    {
        const int runs = campaign::scaled(100, 1);
        const int warmUp = runs / 5;
        setTimeoutFor(fault);
        ProcessState before;
        for (int run = 0; run < runs && !HasFailure(); ++run) {
            SCOPED_TRACE(run);
            if (run == warmUp)
                before = ProcessState::now();
            campaign::forgetPeak();
            play(fault, healthy);
            m_peak = std::max(m_peak, campaign::peakBytes());
        }
        reportCounts();
        reportHostThread();
        if (campaign::isWhole())
            checkGrowthSince(before);
    }

private:
    void play(const Fault &fault, const ScriptedAnswer &healthy)
    {
        fault.strike(*this);
        const int connections = proxy.connectionCount();
        const auto expected = queueEverything();
        ASSERT_TRUE(waitForAnAttempt());
        EXPECT_EQ(posts->delivered(), QList<int>());

        heal(healthy);
        ASSERT_TRUE(waitUntilAllIsSent());
        expectDelivered(expected, fault, proxy.connectionCount() - connections);
        for (const auto &post : posts->ended())
            ++m_results[post.result];
        tidyUp();
    }

    void reportCounts() const
    {
        for (const auto &[result, count] : m_results)
            campaign::report("posts with result " + std::to_string(result), count);
    }

    void checkGrowthSince(const ProcessState &before) const
    {
        const auto after = ProcessState::now();
        const auto growth = after.residentBytes - before.residentBytes;
        const auto peak = m_peak - before.residentBytes;
        campaign::report("resident memory grown by", static_cast<double>(growth) / 1024, "KiB");
        campaign::report("resident memory above that at most", static_cast<double>(peak) / 1024,
                         "KiB");
        constexpr int ofAConnection = 2; // that may be kept, at both its ends
        EXPECT_LE(after.descriptors, before.descriptors + ofAConnection);
        EXPECT_LE(after.threads, before.threads + ofAConnection);
        if (support::memoryIsOurs) {
            EXPECT_LT(growth, 16 * megabyte); // a few large pictures
            EXPECT_LT(peak, 128 * megabyte);  // with what the display keeps, but no such answer
        }
    }

    std::map<int, int> m_results; // how often each
    qint64 m_peak = 0;
};

class Faults : public Outages, public testing::WithParamInterface<Fault>
{
};

struct Acceptance
{
    const char *name;
    ScriptedAnswer (*answer)();
};

void PrintTo(const Acceptance &acceptance, std::ostream *out)
{
    *out << acceptance.name;
}

class OddAnswers : public Outages, public testing::WithParamInterface<Acceptance>
{
};

} // namespace

TEST_P(Faults, Delay_the_newest_of_each_type_and_every_picture_and_lose_none)
{
    playMany(GetParam(), ScriptedAnswer::ok());
}

INSTANTIATE_TEST_SUITE_P(, Faults, testing::ValuesIn(Fault::all()),
                         [](const auto &tested) { return tested.param.name; });

TEST_P(OddAnswers, Deliver_what_waited_once_in_its_order)
{
    playMany(Fault::refusal(), GetParam().answer());
}

INSTANTIATE_TEST_SUITE_P(
    , OddAnswers,
    testing::Values(Acceptance{"Status204", [] { return ScriptedAnswer::status(204); }},
                    Acceptance{"Chunked", [] { return ScriptedAnswer::chunked(); }},
                    // libcurl goes by the last of them, by which the answer is whole.
                    Acceptance{"TwoLengths", [] { return ScriptedAnswer::twoLengths(); }},
                    Acceptance{"CompressionBomb",
                               [] { return ScriptedAnswer::compressedZeros(64 * megabyte); }}),
    [](const auto &tested) { return std::string(tested.param.name); });
