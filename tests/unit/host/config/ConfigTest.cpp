#include "TomlText.h"

#include <Config.h>
#include <ConfigError.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

const QByteArray sample = R"(
top = "outside of any table"

[View.Style]
displayType = 2
scale = 1.5
showImages = true
showPrices = false
title = "Магазин «Радуга» №1"
sizes = [1, 2, 3]
opened = 2024-05-06
since = 2024-05-06T07:08:09Z
at = 07:08:09

[View.style]
displayType = 3
)";

class ConfigValues : public testing::Test
{
protected:
    ConfigValues() { config.load(text.file(sample)); }

    static QString key(const char *name)
    {
        return QStringLiteral("View.Style:") + QLatin1String(name);
    }

    TomlText text;
    Config config;
};

} // namespace

TEST_F(ConfigValues, Keep_their_type)
{
    const struct
    {
        const char *name;
        QVariant expected;
    } rows[] = {
        {"displayType", QVariant::fromValue<qlonglong>(2)},
        {"scale", 1.5},
        {"showImages", true},
        {"showPrices", false},
        {"title", QStringLiteral("Магазин «Радуга» №1")},
        {"sizes", QVariantList{1LL, 2LL, 3LL}},
        {"opened", QStringLiteral("2024-05-06")},
        {"since", QStringLiteral("2024-05-06T07:08:09Z")},
        {"at", QStringLiteral("07:08:09")},
    };
    for (const auto &[name, expected] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(config.value(key(name)), expected);
        EXPECT_EQ(config.value(key(name)).typeId(), expected.typeId());
    }
}

TEST_F(ConfigValues, Default_with_the_type_of_the_default_where_absent)
{
    const QVariant defaults[] = {5, 2.5, true, QStringLiteral("FFFFFF"), QVariantList{1}};
    for (const auto &defaultValue : defaults) {
        const auto value = config.value(key("absent"), defaultValue);
        EXPECT_EQ(value, defaultValue);
        EXPECT_EQ(value.typeId(), defaultValue.typeId());
    }
    EXPECT_FALSE(config.value(key("absent")).isValid());
    EXPECT_EQ(config.value(QStringLiteral("No.Such:group"), 5), QVariant(5));
    EXPECT_EQ(config.stringValue(key("absent"), QStringLiteral("x")), QStringLiteral("x"));
    EXPECT_EQ(config.intValue(key("absent"), 60), 60);
    EXPECT_TRUE(config.boolValue(key("absent"), true));
    EXPECT_FALSE(config.boolValue(key("absent"), false));
}

TEST_F(ConfigValues, Are_found_by_case_sensitive_keys)
{
    EXPECT_EQ(config.intValue(QStringLiteral("View.Style:displayType"), -1), 2);
    EXPECT_EQ(config.intValue(QStringLiteral("View.style:displayType"), -1), 3);
    EXPECT_EQ(config.intValue(QStringLiteral("View.Style:displaytype"), -1), -1);
}

TEST_F(ConfigValues, Outside_of_any_table_have_an_empty_group)
{
    EXPECT_EQ(config.stringValue(QStringLiteral("top")), QStringLiteral("outside of any table"));
    EXPECT_EQ(config.stringValue(QStringLiteral(":top")), QStringLiteral("outside of any table"));
}

TEST_F(ConfigValues, Read_as_text_whatever_their_type)
{
    EXPECT_EQ(config.stringValue(key("displayType")), QStringLiteral("2"));
    EXPECT_EQ(config.stringValue(key("scale")), QStringLiteral("1.5"));
    EXPECT_EQ(config.stringValue(key("showImages")), QStringLiteral("true"));
    EXPECT_EQ(config.stringValue(key("title")), QStringLiteral("Магазин «Радуга» №1"));
}

TEST_F(ConfigValues, Read_as_the_nearest_integer)
{
    constexpr int largest = std::numeric_limits<int>::max();
    constexpr int smallest = std::numeric_limits<int>::min();
    const struct
    {
        QVariant stored;
        int expected;
    } rows[] = {
        {QStringLiteral("800"), 800},
        {QStringLiteral("-5"), -5},
        {QStringLiteral("many"), 0},
        {QStringLiteral(""), 0},
        {QStringLiteral("5000000000"), largest},
        {QVariantList{1}, 0},
        {true, 1},
        {false, 0},
        {800LL, 800},
        {static_cast<qlonglong>(largest), largest},
        {2147483648LL, largest},
        {-2147483649LL, smallest},
        {std::numeric_limits<qlonglong>::max(), largest},
        {1.4, 1},
        {-1.4, -1},
        {3e9, largest},
        {-3e9, smallest},
        {1e300, largest},
        {-1e300, smallest},
        {std::numeric_limits<double>::infinity(), largest},
        {std::numeric_limits<double>::quiet_NaN(), 0},
    };
    for (const auto &[stored, expected] : rows) {
        SCOPED_TRACE(stored.toString().toStdString());
        config.setValue(key("number"), stored);
        EXPECT_EQ(config.intValue(key("number"), 7), expected);
    }
}

TEST_F(ConfigValues, Read_as_a_truth_value)
{
    const struct
    {
        QVariant stored;
        bool expected;
    } rows[] = {
        {true, true},
        {false, false},
        {1, true},
        {0, false},
        {QStringLiteral("true"), true},
        {QStringLiteral("1"), true},
        {QStringLiteral("false"), false},
        {QStringLiteral("0"), false},
        {QStringLiteral(""), false},
    };
    for (const auto &[stored, expected] : rows) {
        SCOPED_TRACE(stored.toString().toStdString());
        config.setValue(key("flag"), stored);
        EXPECT_EQ(config.boolValue(key("flag"), !expected), expected);
    }
}

TEST_F(ConfigValues, Change_in_memory_only)
{
    config.setValue(key("displayType"), QStringLiteral("text now"));
    EXPECT_EQ(config.value(key("displayType")), QVariant(QStringLiteral("text now")));

    Config again;
    again.load(text.path(QStringLiteral("shop.toml")));
    EXPECT_EQ(again.intValue(key("displayType"), -1), 2);
}

TEST_F(ConfigValues, Are_removed_by_an_invalid_value)
{
    config.setValue(key("displayType"), QVariant());
    EXPECT_EQ(config.intValue(key("displayType"), -1), -1);
    EXPECT_FALSE(config.groupKeys(QStringLiteral("View.Style"), true)
                     .contains(QStringLiteral("displayType")));

    config.setValue(QStringLiteral("No.Such:key"), QVariant());
    EXPECT_EQ(config.childGroups(QStringLiteral("No.*"), false), QStringList());
}

TEST_F(ConfigValues, May_be_set_in_a_group_that_was_not_there)
{
    config.setValue(QStringLiteral("New.Group:key"), 5);
    EXPECT_EQ(config.intValue(QStringLiteral("New.Group:key"), -1), 5);
    EXPECT_EQ(config.childGroups(QStringLiteral("New.*"), true),
              QStringList{QStringLiteral("New.Group")});
}

TEST_F(ConfigValues, Have_a_name_that_may_hold_a_colon)
{
    config.setValue(QStringLiteral("Group:name:rest"), 5);
    EXPECT_EQ(config.groupKeys(QStringLiteral("Group"), true),
              QStringList{QStringLiteral("name:rest")});
}

TEST_F(ConfigValues, Are_all_replaced_by_the_next_file)
{
    config.setValue(QStringLiteral("Mine:key"), 5);
    config.load(text.file("[Other]\nkey = 1\n"));
    EXPECT_EQ(config.intValue(QStringLiteral("Other:key"), -1), 1);
    EXPECT_EQ(config.intValue(key("displayType"), -1), -1);
    EXPECT_EQ(config.intValue(QStringLiteral("Mine:key"), -1), -1);
}

TEST_F(ConfigValues, Stay_when_the_next_file_is_broken_or_missing)
{
    EXPECT_THROW(config.load(text.file("[Other]\nkey = \n")), ConfigError);
    EXPECT_THROW(config.load(text.path(QStringLiteral("absent.toml"))), ConfigError);
    EXPECT_EQ(config.intValue(key("displayType"), -1), 2);
    EXPECT_EQ(config.intValue(QStringLiteral("Other:key"), -1), -1);
}

TEST_F(ConfigValues, Tell_whether_the_register_runs_the_touch_interface)
{
    const auto touch = QStringLiteral("View.Interface:touchng");
    EXPECT_FALSE(config.isTouchInterface());
    config.setValue(touch, true);
    EXPECT_TRUE(config.isTouchInterface());
    config.setValue(touch, false);
    EXPECT_FALSE(config.isTouchInterface());
}

TEST(ConfigGroup, That_is_named_with_and_without_quotes_is_one)
{
    const TomlText text;
    Config config;
    config.load(text.file("[a.b]\nx = 1\n[\"a.b\"]\ny = 2\n"));
    EXPECT_EQ(config.intValue(QStringLiteral("a.b:x"), 0), 1);
    EXPECT_EQ(config.intValue(QStringLiteral("a.b:y"), 0), 2);
}
