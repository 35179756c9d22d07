#include "TomlText.h"

#include <Config.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

const QByteArray sample = R"(
[View.QmlStyle]
width = 560
height = 256
Colour = "FFFFFF"

[View.QmlStyle.fonts]
small = 8

[View.QmlStyle.fonts.bold]
large = 20

[View.QmlStyleOther]
not = "a sub-group"

[View.ADTimetable.tea]
index = 2

[View.ADTimetable.coffee]
index = 1

[View.ADTimetable.empty]

[View.ADTimetable.leads.deeper]
index = 3

[ViewXADTimetable.dot]
index = 4

[[goods]]
code = "100"
)";

QStringList texts(std::initializer_list<const char *> names)
{
    QStringList list;
    for (const auto *name : names)
        list.append(QString::fromUtf8(name));
    return list;
}

class ConfigGroups : public testing::Test
{
protected:
    ConfigGroups() { config.load(TomlText().file(sample)); }

    Config config;
};

} // namespace

TEST_F(ConfigGroups, List_their_own_keys_in_alphabetical_order)
{
    EXPECT_EQ(config.groupKeys(QStringLiteral("View.QmlStyle"), true),
              texts({"Colour", "height", "width"}));
}

TEST_F(ConfigGroups, List_the_keys_of_their_sub_groups_when_asked)
{
    EXPECT_EQ(config.groupKeys(QStringLiteral("View.QmlStyle"), false),
              texts({"Colour", "height", "width", "fonts:small", "fonts.bold:large"}));
}

TEST_F(ConfigGroups, Without_keys_of_their_own_still_list_those_of_sub_groups)
{
    const auto group = QStringLiteral("View.ADTimetable.leads");
    EXPECT_EQ(config.groupKeys(group, true), QStringList());
    EXPECT_EQ(config.groupKeys(group, false), texts({"deeper:index"}));
}

TEST_F(ConfigGroups, That_do_not_exist_have_no_keys)
{
    EXPECT_EQ(config.groupKeys(QStringLiteral("View.qmlstyle"), true), QStringList());
    EXPECT_EQ(config.groupKeys(QStringLiteral("No.Such"), false), QStringList());
}

TEST_F(ConfigGroups, Are_found_by_pattern_with_the_empty_ones_and_without_those_that_only_lead_on)
{
    EXPECT_EQ(config.childGroups(QStringLiteral("View.ADTimetable.*"), false),
              texts({"View.ADTimetable.coffee", "View.ADTimetable.empty",
                     "View.ADTimetable.leads.deeper", "View.ADTimetable.tea"}));
}

TEST_F(ConfigGroups, Are_found_without_the_empty_ones_when_asked)
{
    EXPECT_EQ(config.childGroups(QStringLiteral("View.ADTimetable.*"), true),
              texts({"View.ADTimetable.coffee", "View.ADTimetable.leads.deeper",
                     "View.ADTimetable.tea"}));
}

TEST_F(ConfigGroups, Match_a_pattern_as_a_whole_with_case)
{
    const struct
    {
        const char *pattern;
        QStringList expected;
    } rows[] = {
        {"View.ADTimetable", {}},
        {"View.adtimetable.*", {}},
        {"ADTimetable.*", {}},
        {"View.ADTimetable.tea", texts({"View.ADTimetable.tea"})},
        {"*.tea", texts({"View.ADTimetable.tea"})},
        {"View.*.bold", texts({"View.QmlStyle.fonts.bold"})},
        {"View*dot", texts({"ViewXADTimetable.dot"})},
        {"*.*.tea*", texts({"View.ADTimetable.tea"})},
        {"*Timetable.*e*r", texts({"View.ADTimetable.leads.deeper"})},
        {"*ee*pe*", texts({"View.ADTimetable.leads.deeper"})},
        {"**bold", texts({"View.QmlStyle.fonts.bold"})},
        {"View.ADTimetable.te*ea", {}}, // what stands for the one cannot stand for the other
        {"*tea*tea*", {}},
        {"View.[A-Z]*", {}},
    };
    for (const auto &[pattern, expected] : rows) {
        SCOPED_TRACE(pattern);
        EXPECT_EQ(config.childGroups(QString::fromUtf8(pattern), false), expected);
    }
}

TEST_F(ConfigGroups, Are_not_made_of_lists_of_tables)
{
    EXPECT_EQ(config.childGroups(QStringLiteral("goods*"), false), QStringList());
    const auto goods = config.value(QStringLiteral("goods")).toList();
    ASSERT_EQ(goods.size(), 1);
    EXPECT_EQ(goods.first().toMap().value(QStringLiteral("code")), QVariant(QStringLiteral("100")));
}

TEST_F(ConfigGroups, Stay_known_when_their_last_key_is_removed)
{
    config.setValue(QStringLiteral("View.ADTimetable.tea:index"), QVariant());
    const auto pattern = QStringLiteral("*.tea");
    EXPECT_EQ(config.childGroups(pattern, false), texts({"View.ADTimetable.tea"}));
    EXPECT_EQ(config.childGroups(pattern, true), QStringList());
}

TEST_F(ConfigGroups, Are_found_also_for_keys_outside_any_table)
{
    Config outside;
    outside.load(TomlText().file("server = \"http://a\"\n"));
    for (const auto *pattern : {"*", "**", ""})
        EXPECT_EQ(outside.childGroups(QString::fromUtf8(pattern), true), QStringList{QString()})
            << pattern;
    EXPECT_EQ(outside.childGroups(QStringLiteral("a*"), true), QStringList());
}

TEST_F(ConfigGroups, Are_none_without_settings)
{
    EXPECT_EQ(Config().childGroups(QStringLiteral("*"), false), QStringList());
}
