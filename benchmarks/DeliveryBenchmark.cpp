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

/// What is sent, made anew for each post, as a change makes it.
class Receipt4Kb
{
public:
    QVariantMap next()
    {
        bench::change(*m_receipt);
        return bench::payloadOf(*m_receipt);
    }
    void changeIn(const bench::PluginHost &host)
    {
        bench::change(*m_receipt);
        host.reportChange();
    }
    void openIn(bench::PluginHost &host) const { host.setDocument(m_receipt); }

private:
    QSharedPointer<Receipt> m_receipt = bench::receiptOf(bench::positionsOf4Kb);
};

class Picture200Kb
{
public:
    QVariantMap next() const { return m_picture; }
    void changeIn(const bench::PluginHost &host) const
    {
        host.queue({view::Message::Type::ImageData, m_picture});
    }
    void openIn(const bench::PluginHost &host) const { changeIn(host); }

private:
    QVariantMap m_picture = bench::pictureOf(200'000);
};

template <class Content>
void raw(benchmark::State &state)
{
    const bench::Sink sink;
    const bench::RawPost post(sink.port(), "/", json(Content().next()));
    measureArrivals(state, sink, [&] { post(); });
}

template <class Content>
void curl(benchmark::State &state)
{
    const bench::Sink sink;
    Content content;
    bench::CurlPost post(sink.url());
    measureArrivals(state, sink, [&] { post(json(content.next())); });
}

template <class Content>
void naiveQt(benchmark::State &state)
{
    const bench::Sink sink;
    Content content;
    bench::NaiveQt naive(QString::fromStdString(sink.url()));
    measureArrivals(
        state, sink, [&] { naive.post(content.next()); }, [&] { naive.waitForAnswers(); });
}

template <class Content>
void plugin(benchmark::State &state)
{
    const bench::Sink sink;
    Content content;
    bench::PluginHost host(sink.url());
    sink.waitForArrivals(1); // the configuration
    content.openIn(host);
    sink.waitForArrivals(2);
    measureArrivals(state, sink, [&] { content.changeIn(host); });
}

void add(const std::string &name, void (*contender)(benchmark::State &))
{
    benchmark::RegisterBenchmark(name.c_str(), contender)->UseManualTime()->Iterations(samples);
}

template <class Content>
bool addContenders(const std::string &content)
{
    add(content + "/raw", raw<Content>);
    add(content + "/curl", curl<Content>);
    add(content + "/naive Qt", naiveQt<Content>);
    add(content + "/plug-in", plugin<Content>);
    return true;
}

[[maybe_unused]] const bool added = [] {
    add("wake-up of a thread", aThreadsWakeUp);
    return addContenders<Receipt4Kb>("receipt of 4 KB") &&
           addContenders<Picture200Kb>("picture of 200 KB");
}();

} // namespace
