#include "Start.h"

#include "Callgrind.h"
#include "Memory.h"

#include <support/Sink.h>

#include <BasicPlugin.h>
#include <Config.h>
#include <PluginLoader.h>
#include <Singleton.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPluginLoader>

#include <optional>
#include <stdexcept>

using namespace std::chrono_literals;

namespace bench {

namespace {

using Clock = Sink::Clock;

constexpr auto deadline = 60s; // callgrind takes some fifty times as long

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

/// How long a step takes; callgrind writes a profile of it under that name.
template <class Step>
double timed(const char *name, Step step)
{
    CALLGRIND_START_INSTRUMENTATION;
    const auto start = Clock::now();
    step();
    const auto took = milliseconds(Clock::now() - start);
    CALLGRIND_DUMP_STATS_AT(name);
    CALLGRIND_STOP_INSTRUMENTATION;
    return took;
}

void configure(const Sink &display, const std::optional<Sink> &service)
{
    auto &config = Singleton<Config>::instance();
    config.load(QStringLiteral(SAMPLE_SETTINGS));
    config.setValue(QStringLiteral("ViewConnector:server"), QString::fromStdString(display.url()));
    config.setValue(QStringLiteral("ViewConnector:port"), 0);
    config.setValue(QStringLiteral("ViewConnector.Ads:url"),
                    service ? QString::fromStdString(service->url()) : QString());
}

/// The events are needed only by the request to the ad service.
void waitForArrival(const Sink &sink, const char *what)
{
    const QDeadlineTimer end(deadline);
    while (!sink.waitForArrivals(1, 1ms)) {
        if (end.hasExpired())
            throw std::runtime_error(std::string(what) + " did not arrive");
        QCoreApplication::processEvents();
    }
}

} // namespace

QJsonObject measureStart(Ads ads)
{
    const Sink display;
    std::optional<Sink> service;
    if (ads == Ads::Service)
        service.emplace();
    configure(display, service);
    QPluginLoader loader(QStringLiteral(VIEWCONNECTOR_PLUGIN));
    Memory::now(); // its own memory is there from now on
    const auto before = Memory::now();

    const double load = timed("load", [&] {
        if (!loader.load())
            throw PluginError(loader.errorString());
    });
    BasicPlugin *plugin = nullptr;
    const double object =
        timed("object", [&] { plugin = dynamic_cast<BasicPlugin *>(loader.instance()); });
    const auto afterObject = Memory::now();

    CALLGRIND_START_INSTRUMENTATION;
    const auto start = Clock::now();
    plugin->init();
    const auto initialised = Clock::now();
    CALLGRIND_DUMP_STATS_AT("init");
    waitForArrival(display, "the configuration");
    if (service)
        waitForArrival(*service, "the subscription");
    CALLGRIND_STOP_INSTRUMENTATION;
    const auto afterMessage = Memory::now();

    plugin->deinit();
    loader.unload();
    return {
        {QStringLiteral("milliseconds"),
         QJsonObject{
             {QStringLiteral("load"), load},
             {QStringLiteral("object"), object},
             {QStringLiteral("init"), milliseconds(initialised - start)},
             {QStringLiteral("first message"), milliseconds(display.lastArrival() - start)}}},
        {QStringLiteral("kilobytes"),
         QJsonObject{{QStringLiteral("before"), before.toJson()},
                     {QStringLiteral("object"), afterObject.toJson()},
                     {QStringLiteral("first message"), afterMessage.toJson()}}},
    };
}

} // namespace bench
