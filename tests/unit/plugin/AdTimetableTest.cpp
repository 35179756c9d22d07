// The timetable of advertisements in the settings.

#include "PluginFixture.h"

namespace {

class AdTimetable : public PluginFixture
{
protected:
    void set(const QString &id, const QString &key, const QVariant &value) const
    {
        host.config().setValue("View.ADTimetable." + id + ":" + key, value);
    }
    QList<QVariant> read() const { return connector->readAdTimetable(); }
};

QVariantMap entry(const QString &id, int index, const QString &url, int time)
{
    return {{"id", id}, {"index", index}, {"url", url}, {"time", time}};
}

QStringList idsOf(const QList<QVariant> &timetable)
{
    QStringList ids;
    for (const auto &ad : timetable)
        ids.append(ad.toMap()["id"].toString());
    return ids;
}

TEST_F(AdTimetable, It_is_ordered_by_index_whatever_the_order_of_the_groups)
{
    set("b", "index", 2);
    set("a", "index", 1);
    set("z", "index", -7);
    set("c", "index", 10);
    EXPECT_EQ(idsOf(read()), (QStringList{"z", "a", "b", "c"}));
}

TEST_F(AdTimetable, An_entry_has_exactly_four_keys_of_these_types)
{
    set("coffee", "index", 3);
    set("coffee", "url", "http://ads.example/coffee.svg");
    set("coffee", "time", 15);
    const auto timetable = read();
    EXPECT_EQ(timetable, QList<QVariant>{entry("coffee", 3, "http://ads.example/coffee.svg", 15)});
    const auto ad = timetable.constFirst().toMap();
    EXPECT_EQ(ad["id"].typeId(), QMetaType::QString);
    EXPECT_EQ(ad["index"].typeId(), QMetaType::Int);
    EXPECT_EQ(ad["url"].typeId(), QMetaType::QString);
    EXPECT_EQ(ad["time"].typeId(), QMetaType::Int);
}

TEST_F(AdTimetable, What_is_missing_takes_its_default)
{
    set("bare", "index", 1);
    set("bare", "index", QVariant()); // a group stays when it has lost its last key
    EXPECT_EQ(read(), QList<QVariant>{entry("bare", 0, "", 60)});
}

TEST_F(AdTimetable, A_group_without_keys_is_an_entry_too)
{
    set("empty", "url", "x");
    set("empty", "url", {});
    EXPECT_EQ(read(), QList<QVariant>{entry("empty", 0, "", 60)});
}

TEST_F(AdTimetable, A_time_below_one_is_one)
{
    const std::pair<QVariant, int> rows[] = {{0, 1},      {-5, 1},  {1, 1},      {2, 2},
                                             {60, 60},    {"7", 7}, {"soon", 1}, {INT_MAX, INT_MAX},
                                             {INT_MIN, 1}};
    for (const auto &[setting, time] : rows) {
        set("ad", "time", setting);
        EXPECT_EQ(read().constFirst().toMap()["time"], time) << setting.toString().toStdString();
    }
}

TEST_F(AdTimetable, Equal_indexes_both_stay_next_to_each_other)
{
    set("first", "index", 1);
    set("same", "index", 2);
    set("equal", "index", 2);
    set("last", "index", 3);
    const auto ids = idsOf(read());
    ASSERT_EQ(ids.size(), 4);
    EXPECT_EQ(ids.first(), "first");
    EXPECT_EQ((QSet{ids[1], ids[2]}), (QSet<QString>{"same", "equal"}));
    EXPECT_EQ(ids.last(), "last");
}

TEST_F(AdTimetable, Many_equal_indexes_all_stay)
{
    for (int i = 0; i < 100; ++i)
        set(QString::number(i), "index", i % 3);
    const auto timetable = read();
    EXPECT_EQ(timetable.size(), 100);
    for (qsizetype i = 1; i < timetable.size(); ++i)
        EXPECT_LE(timetable[i - 1].toMap()["index"].toInt(), timetable[i].toMap()["index"].toInt());
}

TEST_F(AdTimetable, Without_groups_it_is_empty)
{
    host.config().setValue("View.ADTimetables:index", 1);
    host.config().setValue("View.Style:showImages", true);
    EXPECT_EQ(read(), QList<QVariant>());
}

TEST_F(AdTimetable, An_identifier_may_hold_a_dot)
{
    set("coffee.morning", "index", 1);
    EXPECT_TRUE(idsOf(read()).contains("coffee.morning"));
}

TEST_F(AdTimetable, An_entry_without_an_address_is_kept)
{
    set("empty", "url", "");
    EXPECT_EQ(read(), QList<QVariant>{entry("empty", 0, "", 60)});
}

TEST_F(AdTimetable, Reading_leaves_the_one_that_is_played_alone)
{
    connector->adTimetable = {entry("playing", 0, "", 1)};
    connector->currentAd = 1;
    set("other", "index", 1);
    read();
    EXPECT_EQ(connector->adTimetable, QList<QVariant>{entry("playing", 0, "", 1)});
    EXPECT_EQ(connector->currentAd, 1);
}

TEST_F(AdTimetable, Reading_is_logged)
{
    read();
    const auto line = log.lines().constLast();
    EXPECT_EQ(line.text, "Загружаем расписание рекламы из настроек");
    EXPECT_EQ(line.logger, "viewconnector");
    EXPECT_EQ(line.level, QtInfoMsg);
    EXPECT_EQ(log.lines().size(), 1);
}

} // namespace
