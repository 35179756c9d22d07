// What one change of the receipt costs the host's thread, from the trigger to its return, by the
// number of positions. The display is down: the queue then holds the receipt before, and to let go
// of it is on the host's thread, which is the worst that can happen. The delivery thread sleeps
// until its next try.

#include <baselines/NaiveQt.h>
#include <support/Measure.h>
#include <support/PluginHost.h>
#include <support/SampleReceipt.h>
#include <support/Sink.h>

#include <benchmark/benchmark.h>

#include <thread>

namespace {

const std::string nobody = "http://127.0.0.1:1";
constexpr std::chrono::hours untilNextTry(1);
constexpr std::chrono::milliseconds firstTry(500);

void setTime(benchmark::State &state, std::chrono::nanoseconds time)
{
    state.SetIterationTime(std::chrono::duration<double>(time).count());
}

/// What no contender can do without: a list that is still shared is copied when it changes.
void copyOfTheList(benchmark::State &state)
{
    const auto positions = bench::receiptOf(static_cast<int>(state.range()))->positionMaps();
    for ([[maybe_unused]] auto _ : state)
        setTime(state, bench::timeOf([&] {
                    auto copy = positions;
                    copy.detach();
                    benchmark::DoNotOptimize(copy);
                }));
}

void naiveQt(benchmark::State &state)
{
    const bench::Sink sink;
    const auto receipt = bench::receiptOf(static_cast<int>(state.range()));
    bench::NaiveQt naive(QString::fromStdString(sink.url()));
    for ([[maybe_unused]] auto _ : state) {
        bench::change(*receipt);
        setTime(state, bench::timeOf([&] { naive.post(bench::payloadOf(*receipt)); }));
        naive.waitForAnswers();
    }
}

void plugin(benchmark::State &state)
{
    const auto receipt = bench::receiptOf(static_cast<int>(state.range()));
    bench::PluginHost host(nobody, untilNextTry);
    host.setDocument(receipt);
    std::this_thread::sleep_for(firstTry);
    for ([[maybe_unused]] auto _ : state) {
        bench::change(*receipt);
        setTime(state, bench::timeOf([&] { host.reportChange(); }));
    }
}

/// The same with the change itself, in which the register copies the list that the queue shares.
void pluginAndChange(benchmark::State &state)
{
    const auto receipt = bench::receiptOf(static_cast<int>(state.range()));
    bench::PluginHost host(nobody, untilNextTry);
    host.setDocument(receipt);
    std::this_thread::sleep_for(firstTry);
    for ([[maybe_unused]] auto _ : state)
        setTime(state, bench::timeOf([&] {
                    bench::change(*receipt);
                    host.reportChange();
                }));
}

} // namespace

#define BY_POSITIONS UseManualTime()->Iterations(300)->RangeMultiplier(10)->Range(10, 10'000)

BENCHMARK(copyOfTheList)->Name("host thread/bare copy of the list")->BY_POSITIONS;
BENCHMARK(naiveQt)
    ->Name("host thread/naive Qt")
    ->UseManualTime()
    ->Iterations(50)
    ->Arg(10)
    ->Arg(100);
BENCHMARK(plugin)->Name("host thread/plug-in")->BY_POSITIONS;
BENCHMARK(pluginAndChange)->Name("host thread/plug-in and change")->BY_POSITIONS;
