// The timetable of advertisements in the settings: a group "View.ADTimetable.<id>" for each.

#include <plugin/AdEntry.h>
#include <plugin/ViewConnector.h>

#include <Config.h>
#include <Singleton.h>

#include <log4qt/logger.h>

#include <algorithm>

namespace {

constexpr int defaultSeconds = 60;
constexpr int minSeconds = 1;

QVariantMap readEntry(const Config &config, const QString &group, qsizetype prefixLength)
{
    const int seconds = config.intValue(group + QStringLiteral(":time"), defaultSeconds);
    return {
        {AdEntry::id, group.mid(prefixLength)},
        {AdEntry::index, config.intValue(group + QStringLiteral(":index"), 0)},
        {AdEntry::url, config.stringValue(group + QStringLiteral(":url"), {})},
        {AdEntry::time, seconds < 2 ? minSeconds : seconds},
    };
}

int indexOf(const QVariant &entry)
{
    return entry.toMap().value(AdEntry::index).toInt();
}

} // namespace

QList<QVariant> ViewConnector::readAdTimetable() const
{
    logger->info(QStringLiteral("Загружаем расписание рекламы из настроек"));
    const auto prefix = QStringLiteral("View.ADTimetable.");
    const Config &config = Singleton<Config>::instance();
    QList<QVariant> timetable;
    const QStringList groups = config.childGroups(prefix + u'*', false);
    for (const auto &group : groups)
        timetable.append(readEntry(config, group, prefix.size()));
    std::sort(timetable.begin(), timetable.end(),
              [](const QVariant &a, const QVariant &b) { return indexOf(a) < indexOf(b); });
    return timetable;
}
