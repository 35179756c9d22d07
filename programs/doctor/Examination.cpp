#include <doctor/Examination.h>

#include <doctor/AdServiceCheck.h>
#include <doctor/ClockCheck.h>
#include <doctor/DisplayCheck.h>
#include <doctor/DisplayServer.h>
#include <doctor/GoodsCheck.h>
#include <doctor/PicturesCheck.h>
#include <doctor/PluginCheck.h>
#include <doctor/PortCheck.h>
#include <doctor/Redaction.h>
#include <doctor/SettingsCheck.h>
#include <doctor/TimetableCheck.h>

#include <contract/Contract.h>

#include <Config.h>
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

/// What is in effect under a known key.
QVariant valueOf(const QList<SettingInEffect> &settings, const char *key)
{
    const auto found = std::find_if(settings.begin(), settings.end(), [&](const auto &setting) {
        return setting.key == QLatin1String(key);
    });
    return found == settings.end() ? QVariant() : found->value;
}

/// Without the folder; of a link, that of the file itself, as the kernel names it.
QString fileNameOf(const QString &fileName)
{
    const QFileInfo file(fileName);
    return file.exists() ? QFileInfo(file.canonicalFilePath()).fileName() : file.fileName();
}

} // namespace

std::optional<Diagnosis> examine(const DoctorOptions &options, const std::function<bool()> &goesOn)
{
    const Config &config = Singleton<Config>::instance();
    const auto known = knownSettings(Contract());
    Diagnosis diagnosis{
        options.configFile, QDateTime::currentDateTime(), {}, settingsInEffect(known, config)};
    const auto setting = [&](const char *key) { return valueOf(diagnosis.settings, key); };
    const auto server = setting("ViewConnector:server").toString();
    std::vector<PeerClock> clocks;
    QStringList pictures;
    const auto take = [&](auto result) { // of a check that also reads a clock
        if (result.clock)
            clocks.push_back(*result.clock);
        return result.findings;
    };

    const QList<std::pair<const char *, std::function<Findings()>>> checks{
        {"plugin", [&] { return checkPlugin(options.pluginFile); }},
        {"settings", [&] { return checkSettings(diagnosis.settings, known, keysOf(config)); }},
        {"port",
         [&] {
             return checkPort({redactedText(setting("HttpServer:address").toString()),
                               setting("ViewConnector:port").toInt(),
                               fileNameOf(options.pluginFile), displayServer(server)});
         }},
        {"display",
         [&] {
             const std::chrono::seconds timeout(setting("ViewConnector:timeout").toInt());
             return take(checkDisplay(server, timeout));
         }},
        {"timetable", [&] { return checkTimetable(config, timetablePatience); }},
        {"goods",
         [&] {
             auto goods = checkGoods(setting("Shop:goods").toString(), options.configFile);
             pictures = goods.pictures;
             return goods.findings;
         }},
        {"pictures",
         [&] { return checkPictures(options.imagesFolder, pictures, picturesPatience); }},
        {"ads", [&] { return take(checkAdService(setting("ViewConnector.Ads:url").toString())); }},
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
