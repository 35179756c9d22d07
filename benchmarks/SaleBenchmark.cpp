// A sale of 100 scans: what it costs the register in all its threads, posts included, and how much
// goes over the wire. The argument is the number of scans in a second.

#include <baselines/FifoPoster.h>
#include <baselines/NaiveQt.h>
#include <support/Measure.h>
#include <support/PluginHost.h>
#include <support/SampleReceipt.h>
#include <support/Sink.h>

#include <benchmark/benchmark.h>

#include <QEventLoop>
#include <QTimer>

#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr int scans = 100;
constexpr auto usualInterval = 250ms;
constexpr auto intervalAndPost = 2 * usualInterval;

/// The register is idle, as far as its event loop has nothing to do.
void idle(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Scans 100 goods and reports each by `report`; `finish` returns when the last state is shown.
void sale(benchmark::State &state, const bench::Sink &sink, Receipt &receipt,
          const std::function<void()> &report, const std::function<void()> &finish)
{
    const auto pause = std::chrono::milliseconds(1000 / state.range());
    const auto cpuBefore = bench::processCpuTime() - sink.cpuTime();
    const auto bytesBefore = sink.bytes();
    const auto postsBefore = sink.arrivals();
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < scans; ++i) {
            receipt.addPosition(bench::position(i));
            report();
            idle(pause);
        }
        const auto lastChange = bench::Sink::Clock::now() - pause;
        finish();
        const auto cpu = bench::processCpuTime() - sink.cpuTime() - cpuBefore;
        state.SetIterationTime(std::chrono::duration<double>(cpu).count());
        state.counters["bytes"] = static_cast<double>(sink.bytes() - bytesBefore);
        state.counters["posts"] = static_cast<double>(sink.arrivals() - postsBefore);
        state.counters["last_shown_after_ms"] =
            std::chrono::duration<double, std::milli>(sink.lastArrival() - lastChange).count();
    }
}

void plugin(benchmark::State &state)
{
    const bench::Sink sink;
    const auto receipt = bench::receiptOf(0);
    bench::PluginHost host(sink.url(), usualInterval);
    host.setDocument(receipt);
    idle(intervalAndPost); // the configuration and the empty receipt
    sale(
        state, sink, *receipt, [&] { host.reportChange(); }, [] { idle(intervalAndPost); });
}

void naiveQt(benchmark::State &state)
{
    const bench::Sink sink;
    const auto receipt = bench::receiptOf(0);
    bench::NaiveQt naive(QString::fromStdString(sink.url()));
    naive.post(bench::payloadOf(*receipt));
    naive.waitForAnswers();
    sale(
        state, sink, *receipt, [&] { naive.post(bench::payloadOf(*receipt)); },
        [&] { naive.waitForAnswers(); });
}

void fifo(benchmark::State &state)
{
    const bench::Sink sink;
    const auto receipt = bench::receiptOf(0);
    bench::FifoPoster poster(sink.url(), usualInterval);
    poster.add(bench::payloadOf(*receipt));
    poster.waitUntilEmpty();
    sale(
        state, sink, *receipt, [&] { poster.add(bench::payloadOf(*receipt)); },
        [&] { poster.waitUntilEmpty(); });
}

} // namespace

BENCHMARK(plugin)->Name("sale/plug-in")->UseManualTime()->Iterations(1)->Arg(20)->Arg(5);
BENCHMARK(naiveQt)->Name("sale/naive Qt")->UseManualTime()->Iterations(1)->Arg(20)->Arg(5);
BENCHMARK(fifo)->Name("sale/fifo")->UseManualTime()->Iterations(1)->Arg(20);
