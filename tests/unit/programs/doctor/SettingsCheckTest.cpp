#include "Complete.h"
#include "SettingsFixture.h"

#include <doctor/SettingsCheck.h>

using namespace doctor;

namespace {

class SettingsCheck : public SettingsFixture
{
protected:
    Findings check(const QByteArray &toml)
    {
        load(toml);
        return complete(checkSettings(settingsInEffect(known, config), known, keysOf(config)));
    }

    /// The only problem that is found; a warning.
    Finding problem(const QByteArray &toml)
    {
        const auto findings = check(toml);
        EXPECT_EQ(statuses(findings), (QStringList{"ok", "warning"})) << toml.toStdString();
        return findings.back();
    }

    QString nearest(const QByteArray &toml)
    {
        const auto found = problem(toml);
        EXPECT_EQ(found.details["problem"].toString(), "unknown");
        return found.details["nearest"].toString();
    }
};

} // namespace

TEST_F(SettingsCheck, Finds_nothing_wrong_with_no_settings_and_with_right_ones)
{
    EXPECT_EQ(statuses(check("")), QStringList{"ok"});
    const auto findings = check("[ViewConnector]\nport = 38081\nserver = \"http://a\"\n"
                                "[View.Style]\ndisplayType = 3\nbackgroundColor = \"FFffFF\"\n"
                                "headerFontBold = true\n[View.QmlStyle]\nany = [1]\n");
    EXPECT_EQ(statuses(findings), QStringList{"ok"});
    EXPECT_EQ(findings.front().details["fromFile"].toInt(), 6);
    EXPECT_EQ(findings.front().details["unknown"].toInt(), 0);
}

TEST_F(SettingsCheck, Warns_of_a_wrong_type_and_tells_what_is_in_effect)
{
    const auto port = problem("[ViewConnector]\nport = \"38081\"\n");
    EXPECT_EQ(port.details["problem"].toString(), "type");
    EXPECT_EQ(port.details["key"].toString(), "ViewConnector:port");
    EXPECT_TRUE(english(port).contains("in effect is 38081")) << "a text that is a number is one";
    EXPECT_TRUE(english(problem("[HttpServer]\nguard = 1\n")).contains("in effect is true"));
    EXPECT_TRUE(english(problem("[Host]\nlanguage = 5\n")).contains("in effect is \"5\""));
    EXPECT_TRUE(english(problem("[View.Style]\nreceiptWidth = \"5\"\n"))
                    .contains("the display gets the value as it is"));
}

TEST_F(SettingsCheck, Warns_of_a_number_out_of_range_and_tells_what_is_in_effect)
{
    const auto timeout = problem("[ViewConnector]\ntimeout = 0\n");
    EXPECT_EQ(timeout.details["problem"].toString(), "range");
    EXPECT_TRUE(english(timeout).contains("= 0 is out of range; in effect is 1"));
    EXPECT_TRUE(english(problem("[ViewConnector]\ninterval = -1\n")).contains("in effect is 250"));
    EXPECT_TRUE(
        english(problem("[HttpServer]\nmaxBodyBytes = 0\n")).contains("in effect is 1048576"));
    EXPECT_EQ(problem("[View.Style]\ndisplayType = 4\n").details["problem"].toString(), "range");
    EXPECT_EQ(problem("[View.Style]\nreceiptWidth = -1\n").details["problem"].toString(), "range");
}

TEST_F(SettingsCheck, Warns_of_what_is_no_colour)
{
    for (const auto *colour : {"\"#ffffff\"", "\"red\"", "\"fffffff\"", "\"\""}) {
        const auto toml = QByteArray("[View.Style]\nheaderFontColor = ") + colour + "\n";
        EXPECT_EQ(problem(toml).details["problem"].toString(), "colour") << colour;
    }
}

TEST_F(SettingsCheck, Leaves_the_numbers_of_the_timetable_to_their_own_check)
{
    EXPECT_EQ(statuses(check("[View.ADTimetable.a]\ntime = 0\n")), QStringList{"ok"});
    EXPECT_EQ(problem("[View.ADTimetable.a]\ntime = \"1\"\n").details["problem"].toString(),
              "type");
}

TEST_F(SettingsCheck, Names_the_nearest_right_key)
{
    EXPECT_EQ(nearest("[ViewConnector]\nprot = 1\n"), "ViewConnector:port");
    EXPECT_EQ(nearest("[View.Style]\nDisplayType = 1\n"), "View.Style:displayType");
    EXPECT_EQ(nearest("[View]\ndisplayType = 1\n"), "View.Style:displayType");
    EXPECT_EQ(nearest("server = \"http://a\"\n"), "ViewConnector:server");
    EXPECT_EQ(nearest("[View.ADTimetable]\nurl = \"a\"\n"), "View.ADTimetable.<id>:url");
    EXPECT_EQ(nearest("[Database]\nname = \"x\"\n"), "theme:name");
    EXPECT_EQ(nearest("[Database]\nsecret = \"x\"\n"), "");
}

TEST_F(SettingsCheck, Does_not_repeat_the_value_of_an_unknown_key)
{
    const auto found = problem("[Database]\npassword = \"hunter2\"\n");
    EXPECT_FALSE(english(found).contains("hunter2"));
    EXPECT_FALSE(found.remedy.in(Language::English).contains("hunter2"));
}

TEST_F(SettingsCheck, Tells_of_many_unknown_keys_only_the_first)
{
    QByteArray toml("[Other]\n");
    for (int i = 0; i < 1000; ++i)
        toml += "unheard" + QByteArray::number(i) + " = 1\n";
    const auto findings = check(toml);
    EXPECT_EQ(findings.size(), 51u);
    EXPECT_EQ(findings.front().details["unknown"].toInt(), 1000);
}
