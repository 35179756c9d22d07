#include "SettingsFixture.h"

#include <support/Json.h>
#include <support/PrintQt.h>

using namespace doctor;

class SettingsInEffect : public SettingsFixture
{
};

TEST_F(SettingsInEffect, Are_the_defaults_unless_the_file_says_otherwise)
{
    load("[ViewConnector]\nport = 5\n");
    EXPECT_EQ(toJson(setting("ViewConnector:port")),
              support::json(R"({"key":"ViewConnector:port","value":5,"source":"file"})"));
    EXPECT_EQ(toJson(setting("ViewConnector:timeout")),
              support::json(R"({"key":"ViewConnector:timeout","value":1,"source":"default"})"));
    EXPECT_EQ(toJson(setting("View.Style:appLogoPath")),
              support::json(R"({"key":"View.Style:appLogoPath","value":null,"source":"default"})"));
}

TEST_F(SettingsInEffect, Are_what_the_programs_make_of_small_numbers_and_other_types)
{
    load("[ViewConnector]\nport = \"text\"\ntimeout = -3\ninterval = 0\n"
         "[HttpServer]\nmaxConnections = 0\nguard = \"yes\"\nidleTimeout = 7.6\n"
         "[View.Style]\nreceiptWidth = \"wide\"\n[View.ADTimetable.a]\ntime = 0\n");
    EXPECT_EQ(setting("ViewConnector:port").value.toInt(), 0);
    EXPECT_EQ(setting("ViewConnector:timeout").value.toInt(), 1);
    EXPECT_EQ(setting("ViewConnector:interval").value.toInt(), 250);
    EXPECT_EQ(setting("HttpServer:maxConnections").value.toInt(), 256);
    EXPECT_EQ(setting("HttpServer:idleTimeout").value.toInt(), 8);
    EXPECT_EQ(setting("HttpServer:guard").value, QVariant(true));
    EXPECT_EQ(setting("View.Style:receiptWidth").value, QVariant("wide"));
    EXPECT_EQ(setting("View.ADTimetable.a:time").value.toInt(), 1);
}

TEST_F(SettingsInEffect, Hold_each_advertisement_and_each_touch_setting)
{
    load("[View.ADTimetable.a]\nurl = \"x\"\n[View.ADTimetable.b]\nurl = \"y\"\n"
         "[View.QmlStyle]\nany = 1\ndisplayType = 2\n");
    EXPECT_EQ(setting("View.ADTimetable.a:url").value, QVariant("x"));
    EXPECT_EQ(setting("View.ADTimetable.b:url").value, QVariant("y"));
    EXPECT_EQ(setting("View.QmlStyle:any").value.toInt(), 1);
    EXPECT_EQ(setting("View.QmlStyle:displayType").known.key, "View.QmlStyle:displayType");
    EXPECT_EQ(keysOf(config), (QStringList{"View.ADTimetable.a:url", "View.ADTimetable.b:url",
                                           "View.QmlStyle:any", "View.QmlStyle:displayType"}));
}

TEST_F(SettingsInEffect, Have_the_layout_of_the_style_unless_the_touch_interface_has_its_own)
{
    load("[View.Style]\ndisplayType = 2\n");
    EXPECT_EQ(setting("View.QmlStyle:displayType").value.toInt(), 2);
    EXPECT_FALSE(setting("View.QmlStyle:displayType").isFromFile());
}

TEST_F(SettingsInEffect, Are_told_without_secrets)
{
    load("[ViewConnector]\nserver = \"http://me:pw@host:1/x?k=pw\"\n"
         "[View.QmlStyle]\nlist = [\"pw\"]\n");
    EXPECT_EQ(toJson(setting("ViewConnector:server"))["value"].toString(), "http://…@host:1/x…");
    EXPECT_TRUE(toJson(setting("View.QmlStyle:list"))["value"].isNull());
}
