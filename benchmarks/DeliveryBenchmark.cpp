// From a change at the register to its last byte at the display, while nothing else is going on.

#include <baselines/CurlPost.h>
#include <baselines/NaiveQt.h>
#include <baselines/RawPost.h>
#include <support/PluginHost.h>
#include <support/SampleReceipt.h>
#include <support/Sink.h>

#include <benchmark/benchmark.h>

#include <QJsonDocument>

#include <functional>
#include <semaphore>
#include <thread>

using namespace std::chrono_literals;

namespace {

using Clock = bench::Sink::Clock;

/// Longer than the plug-in's shortest interval: the next change finds it idle, as between two
/// scans.
constexpr auto quiet = 3ms;
constexpr auto lost = 1s;
constexpr int samples = 150; // of each repetition

/// Measures each call of `send` until the display has all of it. `settle` runs unmeasured after it.
void measureArrivals(
    benchmark::State &state, const bench::Sink &sink, const std::function<void()> &send,
    const std::function<void()> &settle = [] {})
{
    for ([[maybe_unused]] auto _ : state) {
        const auto expected = sink.arrivals() + 1;
        Clock::time_point start;
        do { // again if the plug-in had not yet heard the last answer: this change went with it
            std::this_thread::sleep_for(quiet);
            start = Clock::now();
            send();
            settle();
        } while (!sink.waitForArrivals(expected, lost));
        state.SetIterationTime(std::chrono::duration<double>(sink.lastArrival() - start).count());
    }
}

QByteArray json(const QVariantMap &data)
{
    return QJsonDocument::fromVariant(data).toJson(QJsonDocument::Compact);
}

void aThreadsWakeUp(benchmark::State &state)
{
    std::binary_semaphore signal(0);
    std::binary_semaphore answer(0);
    Clock::time_point woken;
    std::jthread sleeper([&](const std::stop_token &stop) {
        while (!stop.stop_requested()) {
            signal.acquire();
            woken = Clock::now();
            answer.release();
        }
    });
    for ([[maybe_unused]] auto _ : state) {
        std::this_thread::sleep_for(quiet);
        const auto start = Clock::now();
        signal.release();
        answer.acquire();
        state.SetIterationTime(std::chrono::duration<double>(woken - start).count());
    }
    sleeper.request_stop();
    signal.release();
}

void receiptRaw(benchmark::State &state)
{
    const bench::Sink sink;
    const auto receipt = bench::receiptOf(bench::positionsOf4Kb);
    const bench::RawPost post(sink.port(), "/updateDocument", json(bench::payloadOf(*receipt)));
    measureArrivals(state, sink, [&] { post(); });
}

void receiptCurl(benchmark::State &state)
{
    const bench::Sink sink;
    const auto receipt = bench::receiptOf(bench::positionsOf4Kb);
    bench::CurlPost post(sink.url() + "/updateDocument");
    measureArrivals(state, sink, [&] {
        bench::change(*receipt);
        post(json(bench::payloadOf(*receipt)));
    });
}

void receiptNaiveQt(benchmark::State &state)
{
    const bench::Sink sink;
    const auto receipt = bench::receiptOf(bench::positionsOf4Kb);
    bench::NaiveQt naive(QString::fromStdString(sink.url() + "/updateDocument"));
    measureArrivals(
        state, sink,
        [&] {
            bench::change(*receipt);
            naive.post(bench::payloadOf(*receipt));
        },
        [&] { naive.waitForAnswers(); });
}

void receiptPlugin(benchmark::State &state)
{
    const bench::Sink sink;
    const auto receipt = bench::receiptOf(bench::positionsOf4Kb);
    bench::PluginHost host(sink.url());
    sink.waitForArrivals(1); // the configuration
    std::this_thread::sleep_for(quiet);
    host.setDocument(receipt);
    sink.waitForArrivals(2);
    measureArrivals(state, sink, [&] {
        bench::change(*receipt);
        host.reportChange();
    });
}

} // namespace

BENCHMARK(aThreadsWakeUp)->UseManualTime()->Iterations(samples)->Name("wake-up of a thread");
BENCHMARK(receiptRaw)->UseManualTime()->Iterations(samples)->Name("receipt/raw");
BENCHMARK(receiptCurl)->UseManualTime()->Iterations(samples)->Name("receipt/curl");
BENCHMARK(receiptNaiveQt)->UseManualTime()->Iterations(samples)->Name("receipt/naive Qt");
BENCHMARK(receiptPlugin)->UseManualTime()->Iterations(samples)->Name("receipt/plug-in");
