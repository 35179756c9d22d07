// The settings file, and what the plug-in and its server make of the settings.

#include "support/Fuzz.h"

#include <unit/plugin/ProbedConnector.h>

#include <support/FreshSingletons.h>

#include <ConfigError.h>
#include <HttpServerOptions.h>

#include <algorithm>

namespace {

int indexOf(const QVariant &entry)
{
    return entry.toMap()[QStringLiteral("index")].toInt();
}

} // namespace

void fuzzOne(const QByteArray &input)
{
    static const support::FreshSingletons host;
    static RecordingConnector connector;
    auto &config = host.config();
    try {
        config.load(fuzz::inFile(input));
    } catch (const ConfigError &) {
        return;
    }

    const auto timetable = connector.readAdTimetable();
    for (qsizetype i = 0; i < timetable.size(); ++i) {
        fuzz::require(timetable[i].toMap()[QStringLiteral("time")].toInt() >= 1,
                      "every advertisement has its time");
        fuzz::require(i == 0 || indexOf(timetable[i - 1]) <= indexOf(timetable[i]),
                      "advertisements are in their order");
    }
    connector.readConfigurationPayload();
    HttpServerOptions::fromConfig();
    const auto groups = config.childGroups(QStringLiteral("*"), false);
    for (const auto &group : groups) {
        const auto names = config.groupKeys(group, false);
        for (const auto &name : names) {
            const auto key = group + u':' + name;
            config.intValue(key, 1);
            config.stringValue(key);
            config.boolValue(key, false);
        }
    }
    config.childGroups(QStringLiteral("*.*a*"), true);
}
