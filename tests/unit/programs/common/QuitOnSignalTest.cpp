#include <common/QuitOnSignal.h>

#include <support/Wait.h>

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

namespace {

class QuitOnSignalOf : public testing::TestWithParam<int>
{
};

/// The other one of the two signals.
int other(int signal)
{
    return signal == SIGINT ? SIGTERM : SIGINT;
}

void raiseTwice(int first, int second)
{
    const QuitOnSignal quit;
    std::raise(first);
    std::raise(second);
    _exit(0);
}

} // namespace

TEST_P(QuitOnSignalOf, Becomes_one_signal_of_the_event_loop)
{
    const QuitOnSignal quit;
    int requests = 0;
    QObject::connect(&quit, &QuitOnSignal::quitRequested, [&] { ++requests; });

    std::raise(GetParam());
    EXPECT_EQ(requests, 0) << "nothing may run in the signal handler";
    EXPECT_TRUE(support::waitFor([&] { return requests > 0; }));
    support::letPass(std::chrono::milliseconds(20));
    EXPECT_EQ(requests, 1);
}

TEST_P(QuitOnSignalOf, Ends_the_process_at_once_when_it_comes_again)
{
    EXPECT_EXIT(raiseTwice(GetParam(), GetParam()), testing::KilledBySignal(GetParam()), "");
}

TEST_P(QuitOnSignalOf, Ends_the_process_at_once_when_it_comes_after_the_other)
{
    EXPECT_EXIT(raiseTwice(other(GetParam()), GetParam()), testing::KilledBySignal(GetParam()), "");
}

TEST_P(QuitOnSignalOf, Ends_the_process_once_nobody_listens_any_more)
{
    EXPECT_EXIT(
        {
            {
                const QuitOnSignal quit;
            }
            std::raise(GetParam());
            _exit(0);
        },
        testing::KilledBySignal(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, QuitOnSignalOf, testing::Values(SIGINT, SIGTERM),
                         [](const auto &signal) {
                             return signal.param == SIGINT ? "SIGINT" : "SIGTERM";
                         });
