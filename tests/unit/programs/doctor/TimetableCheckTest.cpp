#include "Complete.h"
#include "SettingsFixture.h"

#include <doctor/TimetableCheck.h>

#include <support/ScriptedServer.h>

using namespace doctor;
using namespace std::chrono_literals;
using support::ScriptedAnswer;

namespace {

class TimetableCheck : public SettingsFixture
{
protected:
    Findings check(const QByteArray &toml, std::chrono::milliseconds patience = 5s)
    {
        load(toml);
        return complete(checkTimetable(config, patience));
    }

    static QByteArray entry(const QByteArray &id, int index, const QByteArray &url, int time = 5)
    {
        return "[View.ADTimetable." + id + "]\nindex = " + QByteArray::number(index) +
               "\nurl = \"" + url + "\"\ntime = " + QByteArray::number(time) + "\n";
    }

    QByteArray served() const { return server.url("/ad.svg").toEncoded(); }

    support::ScriptedServer server;
};

} // namespace

TEST_F(TimetableCheck, Is_content_without_advertisements)
{
    const auto findings = check("");
    EXPECT_EQ(statuses(findings), QStringList{"ok"});
    EXPECT_EQ(findings.front().details["advertisements"].toInt(), 0);
}

TEST_F(TimetableCheck, Takes_the_advertisements_in_the_order_of_their_index)
{
    const auto findings =
        check(entry("a", 3, served()) + entry("b", 1, served()) + entry("c", 2, served()));
    EXPECT_EQ(statuses(findings), (QStringList{"ok", "ok", "ok", "ok"}));
    EXPECT_EQ(findings[0].details["advertisements"].toInt(), 3);
    EXPECT_EQ(findings[1].details["id"].toString(), "b");
    EXPECT_EQ(findings[2].details["id"].toString(), "c");
    EXPECT_EQ(findings[3].details["id"].toString(), "a");
    EXPECT_EQ(findings[1].details["httpStatus"].toInt(), 200);
    for (const auto &request : server.requests())
        EXPECT_EQ(request.method, "GET");
}

TEST_F(TimetableCheck, Warns_of_the_same_index_of_no_time_and_of_no_address)
{
    EXPECT_EQ(statuses(check(entry("a", 1, served()) + entry("b", 1, served()))),
              (QStringList{"ok", "ok", "warning", "ok"}));
    EXPECT_EQ(statuses(check(entry("a", 1, served(), 0))), (QStringList{"ok", "warning", "ok"}));
    EXPECT_EQ(statuses(check(entry("a", 1, ""))), (QStringList{"ok", "warning"}));
    EXPECT_EQ(statuses(check(entry("a", 1, "coffee.svg"))), (QStringList{"ok", "warning"}));
}

TEST_F(TimetableCheck, Fails_what_cannot_be_fetched)
{
    server.answer(ScriptedAnswer::status(404));
    EXPECT_EQ(statuses(check(entry("a", 1, served()))), (QStringList{"ok", "failed"}));
    server.goDown();
    EXPECT_EQ(statuses(check(entry("a", 1, served()))), (QStringList{"ok", "failed"}));
}

TEST_F(TimetableCheck, Asks_for_a_stream_as_a_display_does)
{
    auto url = server.url("").toEncoded();
    url.replace("http://", "ads://");
    EXPECT_EQ(statuses(check(entry("a", 1, url + "?stream=3&key=K"))), (QStringList{"ok", "ok"}));
    EXPECT_EQ(server.requests().at(0).path, "/streams/3?key=K");
}

TEST_F(TimetableCheck, Looks_for_files)
{
    const auto file = folder.filePath("shop.toml").toUtf8();
    EXPECT_EQ(statuses(check(entry("a", 1, "file://" + file))), (QStringList{"ok", "ok"}));
    EXPECT_EQ(statuses(check(entry("a", 1, "file://" + file + ".none"))),
              (QStringList{"ok", "failed"}));
}

TEST_F(TimetableCheck, Fetches_no_more_than_the_header_and_ends_in_time)
{
    server.answer(ScriptedAnswer::endlessBody());
    EXPECT_EQ(statuses(check(entry("a", 1, served()))), (QStringList{"ok", "ok"}));
    server.answer(ScriptedAnswer::blackHole());
    EXPECT_EQ(statuses(check(entry("a", 1, served()) + entry("b", 2, served()), 300ms)),
              (QStringList{"ok", "failed", "skipped"}));
}

TEST_F(TimetableCheck, Tells_no_secrets_of_an_address)
{
    auto url = served();
    url.replace("http://", "http://me:secret@");
    const auto finding = check(entry("a", 1, url + "?key=secret")).back();
    EXPECT_EQ(finding.status, Status::Ok);
    EXPECT_FALSE(english(finding).contains("secret"));
    EXPECT_FALSE(finding.details["url"].toString().contains("secret"));
}
