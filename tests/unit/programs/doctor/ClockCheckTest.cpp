#include "Complete.h"

#include <doctor/ClockCheck.h>

using namespace doctor;

namespace {

const QDateTime now(QDate(2050, 6, 1), QTime(12, 0), Qt::UTC);

PeerClock peer(qint64 ahead)
{
    return {{"дисплея", "of the display"}, now.addSecs(ahead), now};
}

QStringList check(const QDateTime &time, const QString &zone, const std::vector<PeerClock> &peers)
{
    return statuses(complete(checkClock(time, zone, peers)));
}

} // namespace

TEST(ClockCheck, Is_content_with_a_date_after_the_build_and_a_time_zone)
{
    EXPECT_EQ(check(now, "Europe/Moscow", {}), QStringList{"ok"});
}

TEST(ClockCheck, Fails_a_date_before_the_build)
{
    EXPECT_EQ(check(QDateTime(QDate(2000, 1, 1), QTime()), "UTC", {}), QStringList{"failed"});
}

TEST(ClockCheck, Warns_without_a_time_zone)
{
    EXPECT_EQ(check(now, {}, {}), QStringList{"warning"});
}

TEST(ClockCheck, Compares_the_clock_with_those_of_the_others)
{
    EXPECT_EQ(check(now, "UTC", {peer(60), peer(-61)}), (QStringList{"ok", "ok", "warning"}));
    const auto findings = checkClock(now, "UTC", {peer(3600)});
    EXPECT_EQ(findings.back().details["differenceSeconds"].toInt(), -3600);
    EXPECT_EQ(english(findings.back()), "The clock differs from that of the display by 3600 s.");
}

TEST(ClockCheck, Knows_a_time_zone_that_the_environment_sets)
{
    const auto before = qgetenv("TZ");
    qputenv("TZ", "Asia/Omsk");
    EXPECT_EQ(systemTimeZone(), "Asia/Omsk");
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
}
