// What a display gets besides when the register runs the touch interface.

#include "ConfigurationRows.h"
#include "PluginFixture.h"

namespace {

class TouchConfiguration : public PluginFixture
{
protected:
    TouchConfiguration()
    {
        withoutTouch = payload();
        set("View.Interface:touchng", true);
    }

    QVariantMap payload() const { return connector->readConfigurationPayload(); }
    void set(const QString &key, const QVariant &value) const
    {
        host.config().setValue(key, value);
    }

    /// The value under `key`, with the expectation that it has this type.
    QVariant sent(const QString &key, int type) const
    {
        const auto value = payload().value(key);
        EXPECT_EQ(value.typeId(), type) << key.toStdString();
        return value;
    }

    QVariantMap withoutTouch;
};

TEST_F(TouchConfiguration, Without_settings_four_keys_are_added)
{
    auto expected = withoutTouch;
    expected["View.Interface:touchng"] = true;
    expected["theme:name"] = "touch";
    expected["View.QmlStyle:displayType"] = 0;
    expected["View.QmlStyle:advertisingWidth"] = 560;
    expected["View.QmlStyle:advertisingHeight"] = 256;
    EXPECT_EQ(payload(), expected);
    EXPECT_EQ(payload().size(), 56);
}

TEST_F(TouchConfiguration, The_added_keys_have_these_types)
{
    EXPECT_EQ(sent("theme:name", QMetaType::QString), "touch");
    EXPECT_EQ(sent("View.QmlStyle:displayType", QMetaType::Int), 0);
    EXPECT_EQ(sent("View.QmlStyle:advertisingWidth", QMetaType::Int), 560);
    EXPECT_EQ(sent("View.QmlStyle:advertisingHeight", QMetaType::Int), 256);
}

TEST_F(TouchConfiguration, The_theme_is_sent_as_it_is_stored)
{
    set("theme:name", "dark");
    EXPECT_EQ(sent("theme:name", QMetaType::QString), "dark");
    set("theme:name", 5LL);
    EXPECT_EQ(sent("theme:name", QMetaType::LongLong), 5);
}

TEST_F(TouchConfiguration, The_display_type_is_inherited)
{
    set("View.Style:displayType", 2);
    EXPECT_EQ(payload()["View.Style:displayType"], QVariant(2));
    EXPECT_EQ(sent("View.QmlStyle:displayType", QMetaType::Int), 2);
}

TEST_F(TouchConfiguration, An_inherited_display_type_is_converted_to_an_integer)
{
    const std::pair<QVariant, int> rows[] = {{"3", 3}, {"wide", 0}, {4LL, 4}, {true, 1}};
    for (const auto &[stored, expected] : rows) {
        set("View.Style:displayType", stored);
        EXPECT_EQ(payload()["View.Style:displayType"], stored);
        EXPECT_EQ(sent("View.QmlStyle:displayType", QMetaType::Int), expected);
    }
}

TEST_F(TouchConfiguration, Its_own_display_type_comes_before_the_inherited_one)
{
    set("View.Style:displayType", 2);
    set("View.QmlStyle:displayType", 3);
    EXPECT_EQ(payload()["View.Style:displayType"], QVariant(2));
    EXPECT_EQ(sent("View.QmlStyle:displayType", QMetaType::Int), 3);
}

TEST_F(TouchConfiguration, Three_keys_are_integers_however_they_are_stored)
{
    for (const QString &name :
         {QString("displayType"), QString("advertisingWidth"), QString("advertisingHeight")}) {
        const auto key = "View.QmlStyle:" + name;
        const std::pair<QVariant, int> rows[] = {{"800", 800}, {800LL, 800}, {800.0, 800},
                                                 {"wide", 0},  {"", 0},      {-1, -1}};
        for (const auto &[stored, expected] : rows) {
            set(key, stored);
            EXPECT_EQ(sent(key, QMetaType::Int), expected) << stored.toString().toStdString();
        }
        EXPECT_EQ(payload().size(), 56);
        set(key, QVariant());
    }
}

TEST_F(TouchConfiguration, All_other_keys_of_the_group_keep_their_stored_type)
{
    const std::pair<QString, QVariant> rows[] = {{"text", "800"},   {"number", 5LL},
                                                 {"fraction", 2.5}, {"flag", true},
                                                 {"emptyText", ""}, {"list", QVariantList{1, "b"}}};
    for (const auto &[name, value] : rows)
        set("View.QmlStyle:" + name, value);
    for (const auto &[name, value] : rows)
        EXPECT_EQ(sent("View.QmlStyle:" + name, value.typeId()), value);
    EXPECT_EQ(payload().size(), 56 + std::ssize(rows));
}

TEST_F(TouchConfiguration, A_key_of_the_group_that_is_empty_is_sent_empty)
{
    set("View.QmlStyle:background", "");
    ASSERT_TRUE(payload().contains("View.QmlStyle:background"));
    EXPECT_EQ(sent("View.QmlStyle:background", QMetaType::QString), "");
}

TEST_F(TouchConfiguration, Only_that_group_is_copied)
{
    const auto before = payload();
    for (const auto *key :
         {"View.Style:other", "View.Logic:other", "View.Qmlstyle:other", "View.QmlStyle2:other",
          "View.QmlStyle.sub:other", "theme:other", "View.Interface:other"})
        set(key, "x");
    EXPECT_EQ(payload(), before);
}

TEST_F(TouchConfiguration, The_base_settings_are_the_same)
{
    for (const auto &row : configurationRows) {
        EXPECT_EQ(payload()[row.key], row.value) << row.key.toStdString();
        EXPECT_EQ(payload()[row.key].typeId(), row.type) << row.key.toStdString();
    }
}

} // namespace
