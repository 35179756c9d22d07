#include "Outage.h"

#include <campaigns/support/Campaign.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <map>

namespace {

using namespace std::chrono_literals;
using support::ScriptedAnswer;

class Flapping : public Outage
{
protected:
    /// Opens the port and closes it again until all has arrived.
    void flapUntilAllIsSent()
    {
        for (int i = 0; i < 200 && posts->delivered().size() < m_expected.size(); ++i) {
            proxy.comeUp();
            support::letPass(flap);
            proxy.goDown();
            support::letPass(flap);
        }
        proxy.comeUp();
        ASSERT_TRUE(waitUntilAllIsSent());
    }

    /// Each request was an attempt of its own.
    void expectNoMoreRequestsThanAttempts()
    {
        std::map<int, int> attempts;
        for (const auto &post : posts->ended())
            ++attempts[post.number];
        for (const auto &request : display.requests())
            EXPECT_GE(--attempts[numberOf(request.body)], 0);
    }

    static constexpr auto flap = 100ms;
    QList<int> m_expected;
};

} // namespace

TEST_F(Flapping, Of_the_display_each_100_ms_loses_nothing)
{
    int cut = 0;
    int attempts = 0;
    for (int run = 0; run < campaign::scaled(100, 1) && !HasFailure(); ++run) {
        SCOPED_TRACE(run);
        proxy.goDown();
        m_expected = queueEverything(1000); // which gets through while the port is open
        ASSERT_TRUE(waitForAnAttempt());
        display.answer(ScriptedAnswer::slow(30ms)); // so that posts are under way at the cuts
        flapUntilAllIsSent();
        EXPECT_EQ(posts->delivered(), m_expected);
        expectNoMoreRequestsThanAttempts();
        attempts += static_cast<int>(posts->endedCount());
        cut += static_cast<int>(display.requestCount() - m_expected.size());
        tidyUp();
    }
    campaign::report("attempts", attempts);
    campaign::report("requests cut before their answer", cut);
    reportHostThread();
}
