// A burst of changes while the display is down: what each costs the host's thread, its worst pause,
// and how far the memory grows.

#include <baselines/FifoPoster.h>
#include <support/Measure.h>
#include <support/PluginHost.h>
#include <support/SampleReceipt.h>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <numeric>
#include <thread>

namespace {

const std::string nobody = "http://127.0.0.1:1";
constexpr std::chrono::milliseconds usualInterval(250);

/// Changes the receipt as often as the argument says and reports each change by `report`.
void burst(benchmark::State &state, Receipt &receipt, const std::function<void()> &report)
{
    const auto count = static_cast<std::size_t>(state.range());
    for ([[maybe_unused]] auto _ : state) {
        ::malloc_trim(0); // what the repetition before has left is not to be filled again
        std::vector<std::chrono::nanoseconds> times(count);
        bench::change(receipt);
        report();
        std::this_thread::sleep_for(2 * usualInterval); // what the first post takes is no growth
        const auto before = bench::residentBytes();
        for (auto &time : times) {
            bench::change(receipt);
            time = bench::timeOf(report);
        }
        const auto after = bench::residentBytes();
        const auto sum = std::accumulate(times.begin(), times.end(), std::chrono::nanoseconds(0));
        state.SetIterationTime(std::chrono::duration<double>(sum).count() /
                               static_cast<double>(count));
        const auto ns = [&](double share) {
            return static_cast<double>(bench::percentile(times, share).count());
        };
        state.counters["p50_ns"] = ns(0.5);
        state.counters["p9999_ns"] = ns(0.9999);
        state.counters["worst_ns"] = ns(1);
        state.counters["growth_bytes"] = static_cast<double>(after) - static_cast<double>(before);
    }
}

void plugin(benchmark::State &state)
{
    const auto receipt = bench::receiptOf(bench::positionsOf4Kb);
    bench::PluginHost host(nobody, usualInterval);
    host.setDocument(receipt);
    burst(state, *receipt, [&] { host.reportChange(); });
}

void fifo(benchmark::State &state)
{
    const auto receipt = bench::receiptOf(bench::positionsOf4Kb);
    bench::FifoPoster poster(nobody, usualInterval);
    burst(state, *receipt, [&] { poster.add(bench::payloadOf(*receipt)); });
}

} // namespace

BENCHMARK(plugin)
    ->Name("burst/plug-in")
    ->UseManualTime()
    ->Iterations(1)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000);
BENCHMARK(fifo)
    ->Name("burst/fifo")
    ->UseManualTime()
    ->Iterations(1)
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000);
