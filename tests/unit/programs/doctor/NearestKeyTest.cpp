#include <doctor/NearestKey.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

using doctor::nearestKey;

namespace {

const QStringList keys{
    "ViewConnector:server",      "ViewConnector:port",        "ViewConnector.Ads:url",
    "View.Style:displayType",    "View.QmlStyle:displayType", "View.ADTimetable.*:url",
    "View.Style:headerFontBold", "HttpServer:address",        "HttpServer:guard"};

} // namespace

TEST(NearestKey, Is_the_same_in_other_letters)
{
    EXPECT_EQ(nearestKey("View.Style:DisplayType", keys), "View.Style:displayType");
    EXPECT_EQ(nearestKey("viewconnector:Port", keys), "ViewConnector:port");
}

TEST(NearestKey, Is_the_one_with_the_fewest_mistakes)
{
    EXPECT_EQ(nearestKey("ViewConnector:prot", keys), "ViewConnector:port");
    EXPECT_EQ(nearestKey("ViewConector:sever", keys), "ViewConnector:server");
    EXPECT_EQ(nearestKey("View.Style:headerFontBolt", keys), "View.Style:headerFontBold");
}

TEST(NearestKey, Is_the_right_name_in_another_group)
{
    EXPECT_EQ(nearestKey("View:displayType", keys), "View.Style:displayType");
    EXPECT_EQ(nearestKey("View.Logic:guard", keys), "HttpServer:guard");
    EXPECT_EQ(nearestKey(":server", keys), "ViewConnector:server");
    EXPECT_EQ(nearestKey("Ads:url", keys), "ViewConnector.Ads:url");
    EXPECT_EQ(nearestKey("View.ADTimetabel.coffee:url", keys), "View.ADTimetable.*:url");
}

TEST(NearestKey, Is_none_for_what_is_like_nothing)
{
    EXPECT_EQ(nearestKey("Database:password", keys), "");
    EXPECT_EQ(nearestKey("View.Style:x", keys), "");
    EXPECT_EQ(nearestKey(QString(100'000, 'x'), keys), "");
    EXPECT_EQ(nearestKey("ViewConnector:port", {}), "");
}
