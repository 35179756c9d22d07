// No descriptor is left in the host's process.

#include "BusyCrowd.h"
#include "Inbound.h"
#include "Peer.h"

#include <campaigns/support/ProcessState.h>
#include <support/DescriptorLimit.h>

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <vector>

namespace {

using namespace inbound;

std::chrono::nanoseconds processorTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// All descriptors that this process may have are in use while it lives.
class Exhaustion
{
public:
    Exhaustion()
    {
        for (int taken = ::dup(STDERR_FILENO); taken >= 0; taken = ::dup(STDERR_FILENO))
            m_taken.push_back(taken);
    }
    ~Exhaustion()
    {
        for (const int taken : m_taken)
            ::close(taken);
    }
    Exhaustion(const Exhaustion &) = delete;
    Exhaustion &operator=(const Exhaustion &) = delete;

private:
    static constexpr int spare = 8;
    const support::DescriptorLimit m_limit{
        static_cast<rlim_t>(campaign::ProcessState::now().descriptors + spare)};
    std::vector<int> m_taken;
};

class Descriptors : public Inbound
{
protected:
    /// A thread of Qt's that begins without a descriptor ends the process, so the plug-in's has to
    /// be running.
    Descriptors()
    {
        start();
        EXPECT_TRUE(support::waitFor([&] { return display.requestCount() == 1; }));
    }

    /// Clients come while there is no descriptor for them, and are served when there is.
    void outlastExhaustion()
    {
        std::vector<Peer> clients(4);
        {
            const Exhaustion exhaustion;
            for (const auto &client : clients) {
                ASSERT_TRUE(client.connect(port()));
                ASSERT_TRUE(client.sendAll(GoodClient::request(), 10s));
            }
            const auto before = processorTime();
            support::letPass(1s);
            const std::chrono::duration<double, std::milli> spent = processorTime() - before;
            campaign::report("processor time of a second", spent.count(), "ms");
            EXPECT_LT(spent, 500ms);
            for (const auto &client : clients)
                EXPECT_FALSE(client.waitForArrival(0ms)); // or nothing was exhausted
        }
        runBeside([&] {
            for (const auto &client : clients)
                EXPECT_EQ(client.awaitAnswer(promptly()), 200);
        });
        EXPECT_EQ(answerOfGoodClient(), 200);
    }
};

} // namespace

TEST_F(Descriptors, That_run_out_on_a_silent_port_neither_spin_nor_stop_it)
{
    outlastExhaustion();
}

TEST_F(Descriptors, That_run_out_beside_an_open_connection_neither_spin_nor_stop_the_port)
{
    constexpr int bothEnds = 2;
    const int before = campaign::ProcessState::now().descriptors;
    const Peer open;
    ASSERT_TRUE(open.connect(port()));
    ASSERT_EQ(answerOfGoodClient(), 200); // accepted behind the other one
    ASSERT_TRUE(support::waitFor(
        [&] { return campaign::ProcessState::now().descriptors == before + bothEnds; }));
    outlastExhaustion();
}

TEST_F(Descriptors, That_run_out_beside_a_busy_connection_neither_spin_nor_stop_the_port)
{
    const BusyCrowd busy(port(), 1);
    ASSERT_TRUE(support::waitFor([&] { return busy.bytesReceived() > 0; }));
    outlastExhaustion();
}

TEST_F(Descriptors, That_run_out_keep_no_message_from_the_display)
{
    {
        const Exhaustion exhaustion;
        plugin->addMessage({view::Message::Type::ShowAd, {{QStringLiteral("n"), 1}}});
        support::letPass(1s);
    }
    EXPECT_TRUE(support::waitFor([&] { return display.requestCount() == 2; }, 30s));
    EXPECT_EQ(display.requests().constLast().body, "{\"n\":1}");
    EXPECT_EQ(answerOfGoodClient(), 200);
}
