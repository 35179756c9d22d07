#include <doctor/Examination.h>

#include <doctor/AdServiceCheck.h>
#include <doctor/ClockCheck.h>
#include <doctor/DisplayCheck.h>
#include <doctor/DisplayServer.h>
#include <doctor/GoodsCheck.h>
#include <doctor/PicturesCheck.h>
#include <doctor/PluginCheck.h>
#include <doctor/PortCheck.h>
#include <doctor/SettingsCheck.h>
#include <doctor/TimetableCheck.h>

#include <contract/Contract.h>

#include <Config.h>
#include <HttpServerOptions.h>
#include <Singleton.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>

namespace doctor {

namespace {

using namespace std::chrono_literals;

constexpr auto timetablePatience = 8s;
constexpr auto picturesPatience = 5s;
constexpr int defaultPort = 38081;

QString displaySetting(const Config &config)
{
    return config.stringValue(QStringLiteral("ViewConnector:server"));
}

std::chrono::seconds postTimeout(const Config &config)
{
    return std::chrono::seconds(
        std::max(1, config.intValue(QStringLiteral("ViewConnector:timeout"), 1)));
}

/// Without the folder; of a link, that of the file itself, as the kernel names it.
QString fileNameOf(const QString &fileName)
{
    const QFileInfo file(fileName);
    return file.exists() ? QFileInfo(file.canonicalFilePath()).fileName() : file.fileName();
}

PluginPort pluginPort(const Config &config, const QString &pluginFile)
{
    return {HttpServerOptions::fromConfig().address,
            config.intValue(QStringLiteral("ViewConnector:port"), defaultPort),
            fileNameOf(pluginFile), displayServer(displaySetting(config))};
}

} // namespace

std::optional<Diagnosis> examine(const DoctorOptions &options, const std::function<bool()> &goesOn)
{
    const Config &config = Singleton<Config>::instance();
    Diagnosis diagnosis{options.configFile, QDateTime::currentDateTime(), {}, {}};
    std::vector<PeerClock> clocks;
    QStringList pictures;
    const auto take = [&](auto result) { // of a check that also reads a clock
        if (result.clock)
            clocks.push_back(*result.clock);
        return result.findings;
    };

    const std::pair<const char *, std::function<Findings()>> checks[] = {
        {"plugin", [&] { return checkPlugin(options.pluginFile); }},
        {"settings",
         [&] {
             const auto known = knownSettings(Contract());
             diagnosis.settings = settingsInEffect(known, config);
             return checkSettings(diagnosis.settings, known, keysOf(config));
         }},
        {"port", [&] { return checkPort(pluginPort(config, options.pluginFile)); }},
        {"display",
         [&] { return take(checkDisplay(displaySetting(config), postTimeout(config))); }},
        {"timetable", [&] { return checkTimetable(config, timetablePatience); }},
        {"goods",
         [&] {
             auto goods =
                 checkGoods(config.stringValue(QStringLiteral("Shop:goods")), options.configFile);
             pictures = goods.pictures;
             return goods.findings;
         }},
        {"pictures",
         [&] { return checkPictures(options.imagesFolder, pictures, picturesPatience); }},
        {"ads",
         [&] {
             return take(
                 checkAdService(config.stringValue(QStringLiteral("ViewConnector.Ads:url"))));
         }},
        {"clock",
         [&] { return checkClock(QDateTime::currentDateTime(), systemTimeZone(), clocks); }},
    };
    const auto *logger = Log4Qt::LogManager::logger(QStringLiteral("doctor"));
    for (const auto &[name, check] : checks) {
        if (!goesOn())
            return std::nullopt;
        QElapsedTimer time;
        time.start();
        append(diagnosis.findings, check());
        logger->debug(
            QStringLiteral("Check %1: %2 ms").arg(QLatin1String(name)).arg(time.elapsed()));
    }
    return diagnosis;
}

} // namespace doctor
