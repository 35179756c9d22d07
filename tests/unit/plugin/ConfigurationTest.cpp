// The configuration that every display gets.

#include "ConfigurationRows.h"
#include "PluginFixture.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

#include <set>

namespace {

constexpr auto touchKey = "View.Interface:touchng";

class Configuration : public PluginFixture
{
protected:
    QVariantMap payload() const { return connector->readConfigurationPayload(); }
};

TEST_F(Configuration, The_table_has_51_different_keys)
{
    std::set<QString> keys;
    for (const auto &row : configurationRows)
        keys.insert(row.key);
    EXPECT_EQ(keys.size(), 51U);
}

TEST_F(Configuration, Every_setting_has_its_default_with_its_type)
{
    const auto sent = payload();
    for (const auto &[key, type, value] : configurationRows) {
        SCOPED_TRACE(key.toStdString());
        ASSERT_TRUE(sent.contains(key));
        EXPECT_EQ(sent[key], value);
        EXPECT_EQ(sent[key].typeId(), type);
    }
}

TEST_F(Configuration, It_has_the_51_keys_and_the_touch_flag_and_no_other)
{
    std::set<QString> expected{touchKey};
    for (const auto &row : configurationRows)
        expected.insert(row.key);
    const auto keys = payload().keys();
    EXPECT_EQ(std::set<QString>(keys.begin(), keys.end()), expected);
    EXPECT_EQ(keys.size(), 52);
}

TEST_F(Configuration, The_touch_flag_is_a_boolean_that_is_always_there)
{
    EXPECT_EQ(payload()[touchKey], QVariant(false));
    EXPECT_EQ(payload()[touchKey].typeId(), QMetaType::Bool);
    host.config().setValue(touchKey, "true");
    EXPECT_EQ(payload()[touchKey], QVariant(true));
    EXPECT_EQ(payload()[touchKey].typeId(), QMetaType::Bool);
}

TEST_F(Configuration, A_stored_value_is_sent_with_the_type_of_the_store)
{
    const QVariant values[] = {
        42LL, 2.5, true, QString("text"), QString(""), QVariantList{1, "two"}};
    for (const auto &row : configurationRows) {
        for (const auto &value : values) {
            host.config().setValue(row.key, value);
            EXPECT_EQ(payload()[row.key], value) << row.key.toStdString();
            EXPECT_EQ(payload()[row.key].metaType(), value.metaType()) << row.key.toStdString();
        }
        host.config().setValue(row.key, QVariant());
    }
}

TEST_F(Configuration, A_stored_value_changes_no_other)
{
    const auto defaults = payload();
    for (const auto &row : configurationRows) {
        host.config().setValue(row.key, "stored");
        auto expected = defaults;
        expected[row.key] = "stored";
        EXPECT_EQ(payload(), expected);
        host.config().setValue(row.key, QVariant());
    }
}

TEST_F(Configuration, Other_settings_are_never_sent)
{
    const auto defaults = payload();
    for (const auto *key :
         {"View.Style:other", "View.Style:headerheight", "View.Style.sub:headerHeight",
          "View.Logic:other", "View.Logic:showQrCode", "GUI:other", "ViewConnector:server",
          "View.ADTimetable.coffee:url", "View.Interface:other", "headerHeight",
          "View.QmlStyle:displayType", "View.QmlStyle:other", "theme:name"})
        host.config().setValue(key, 5);
    EXPECT_EQ(payload(), defaults);
}

TEST_F(Configuration, The_label_mask_is_sent_unexpanded)
{
    EXPECT_EQ(payload()["View.Style:positionDiscountLabelMask"].toString(),
              "Скидка %(position.disc_perc[.2f])%");
}

TEST_F(Configuration, Keys_without_a_default_are_null_on_the_wire)
{
    const auto json = QJsonObject::fromVariantMap(payload());
    for (const auto *key : {"View.Style:appLogoPath", "View.Style:backgroundImagePath"}) {
        ASSERT_TRUE(json.contains(QString(key)));
        EXPECT_TRUE(json[QString(key)].isNull());
    }
}

TEST_F(Configuration, Reading_it_changes_nothing_and_logs_nothing)
{
    connector->dialogTypes = {{1, Type::QrPayment}};
    (void)payload();
    EXPECT_EQ(connector->dialogTypes.size(), 1);
    EXPECT_TRUE(isQueueEmpty());
    EXPECT_TRUE(connector->sent.isEmpty());
    EXPECT_TRUE(log.lines().isEmpty());
    EXPECT_EQ(payload(), payload());
}

TEST_F(Configuration, A_start_queues_it_once_and_later_changes_are_not_sent)
{
    connector->init();
    host.config().setValue("View.Style:headerHeight", 99);
    const QList<view::Message> sent = connector->sent;
    ASSERT_EQ(sent.size(), 1);
    EXPECT_EQ(sent.constFirst().type, Type::Configure);
    EXPECT_EQ(sent.constFirst().data["View.Style:headerHeight"], QVariant(40));
}

} // namespace
