// A register that lives and ends as it is told, in a process of its own. Its exit code is 42.
//
//     lifecycle_host STATE unload LIVES SEED
//     lifecycle_host STATE return|exit|quick_exit|drop-the-loader
//
// The first form lets the plug-in live that many times, each time to its end in that state of its
// client, and prints the microseconds of each end, and what the process held before and after. The
// second leaves the process while the plug-in is in that state.

#include "Life.h"

#include <support/ProcessState.h>
#include <support/Wait.h>

#include <QCoreApplication>
#include <QPluginLoader>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

using namespace std::chrono_literals;
using campaign::ProcessState;

constexpr int exitCode = 42;
/// What is allocated once, or kept for the next time, is there after so many, and so many to the
/// state in question, some of which take a second.
constexpr int warmUpLives = 20;
constexpr int warmUpLivesToState = 5;

Life::Clock::duration liveOnce(const std::string &state, std::mt19937 &random)
{
    return Life(state, random).end();
}

/// A thread that outlives its plug-in ends once its display is gone.
void waitForEndedThreads(int usual)
{
    support::waitFor([&] { return ProcessState::now().threads <= usual; }, 30s);
}

int live(const std::string &state, int lives, unsigned seed)
{
    std::mt19937 random(seed);
    const int threads = ProcessState::now().threads;
    for (int i = 0; i < warmUpLives; ++i)
        liveOnce("waiting", random);
    for (int i = 0; i < warmUpLivesToState; ++i)
        liveOnce(state, random);
    waitForEndedThreads(threads);

    const auto before = ProcessState::now();
    for (int i = 0; i < lives; ++i) {
        const auto took = std::chrono::ceil<std::chrono::microseconds>(liveOnce(state, random));
        std::printf("end %lld\n", static_cast<long long>(took.count()));
    }
    waitForEndedThreads(before.threads);
    const auto after = ProcessState::now();
    std::printf("threads %d %d\n", before.threads, after.threads);
    std::printf("descriptors %d %d\n", before.descriptors, after.descriptors);
    std::printf("resident %lld %lld\n", before.residentBytes, after.residentBytes);
    return exitCode;
}

int leave(const std::string &state, const std::string &way)
{
    // It lets go of the library without unloading it: the plug-in is then destroyed only when main
    // has returned and the application object is gone.
    if (way == "drop-the-loader")
        QPluginLoader(QStringLiteral(VIEWCONNECTOR_PLUGIN)).instance();

    static std::mt19937 random;
    static auto &life = *new Life(state, random); // nobody tidies up
    if (way == "drop-the-loader")
        life.end();
    else if (way == "exit")
        std::exit(exitCode);
    else if (way == "quick_exit")
        std::quick_exit(exitCode);
    else if (way != "return")
        return EXIT_FAILURE;
    return exitCode;
}

} // namespace

int main(int argc, char **argv)
try {
    const QCoreApplication application(argc, argv);
    if (argc == 5 && std::string(argv[2]) == "unload")
        return live(argv[1], std::atoi(argv[3]), static_cast<unsigned>(std::atoi(argv[4])));
    return argc == 3 ? leave(argv[1], argv[2]) : EXIT_FAILURE;
} catch (const std::exception &error) {
    std::fprintf(stderr, "lifecycle_host: %s\n", error.what());
    return EXIT_FAILURE;
}
