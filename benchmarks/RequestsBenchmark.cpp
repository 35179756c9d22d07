// A display that reports advertisements as fast as it can, while the register's main thread has
// nothing else to do.

#include <baselines/BareHttpServer.h>
#include <baselines/Nginx.h>
#include <support/LoadClient.h>
#include <support/Loopback.h>
#include <support/Measure.h>
#include <support/PluginHost.h>
#include <support/Sink.h>

#include <Config.h>
#include <Singleton.h>

#include <benchmark/benchmark.h>

#include <QEventLoop>
#include <QScopeGuard>

#include <chrono>
#include <future>

using namespace std::chrono_literals;

namespace {

constexpr int requests = 4000; // of each sample
constexpr int warmUp = 500;
constexpr int samples = 5; // of each repetition
/// The pause between posts that the plug-in has unless told otherwise.
constexpr auto usualInterval = 250ms;
constexpr auto adResult = R"({"type":"result","name":"adResult","value":true})";

/// How long the requests take beside the event loop of this thread.
std::chrono::nanoseconds timeBesideEvents(bench::LoadClient &client, int count)
{
    QEventLoop loop;
    auto time = std::async(std::launch::async, [&] {
        const auto end = qScopeGuard(
            [&] { QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection); });
        return bench::timeOf([&] { client.run(count); });
    });
    loop.exec();
    return time.get();
}

void measureRequests(benchmark::State &state, int port, int connections)
{
    bench::LoadClient client(port, connections, bench::postOf(port, adResult));
    timeBesideEvents(client, warmUp);
    for ([[maybe_unused]] auto _ : state)
        state.SetIterationTime(
            std::chrono::duration<double>(timeBesideEvents(client, requests)).count());
    state.SetItemsProcessed(state.iterations() * requests);
}

void setTimetable()
{
    auto &config = Singleton<Config>::instance();
    for (int i = 1; i <= 3; ++i) {
        const auto group = QStringLiteral("View.ADTimetable.ad%1:").arg(i);
        config.setValue(group + QStringLiteral("index"), i);
        config.setValue(group + QStringLiteral("url"), QStringLiteral("http://ads.example/x.svg"));
    }
}

template <int connections>
void requestsBare(benchmark::State &state)
{
    const bench::BareHttpServer server;
    measureRequests(state, server.port(), connections);
}

template <int connections>
void requestsNginx(benchmark::State &state)
{
    const bench::Nginx server;
    measureRequests(state, server.port(), connections);
}

template <int connections>
void requestsPlugin(benchmark::State &state)
{
    const bench::Sink display;
    setTimetable();
    const int port = bench::freePort();
    const bench::PluginHost host(display.url(), usualInterval, port);
    measureRequests(state, port, connections);
}

} // namespace

#define REQUESTS(FUNCTION, NAME)                                                                   \
    BENCHMARK(FUNCTION)->UseManualTime()->Iterations(samples)->Name(NAME)

REQUESTS(requestsBare<1>, "adResult, 1 connection/libmicrohttpd");
REQUESTS(requestsNginx<1>, "adResult, 1 connection/nginx");
REQUESTS(requestsPlugin<1>, "adResult, 1 connection/plug-in");
REQUESTS(requestsBare<16>, "adResult, 16 connections/libmicrohttpd");
REQUESTS(requestsNginx<16>, "adResult, 16 connections/nginx");
REQUESTS(requestsPlugin<16>, "adResult, 16 connections/plug-in");
