// Advertisements, one after the other, and what the display's results do to them.

#include "PluginFixture.h"

#include "HttpRequest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUrl>

namespace {

QVariantMap ad(const QString &id, const QVariant &url = "http://ads.example/x.svg")
{
    return {{"id", id}, {"index", 0}, {"url", url}, {"time", 60}};
}

const QVariantMap stream{{"index", 0}, {"time", INT_MAX}, {"url", QUrl("ads://host?stream=1")}};

class AdCycle : public PluginFixture
{
protected:
    void play(const QList<QVariant> &timetable) const
    {
        connector->adTimetable = timetable;
        connector->currentAd = 0;
        connector->sendAdvertising();
    }
    void report(const QJsonValue &shown) const { connector->processAdResult({{"value", shown}}); }

    /// The identifiers of the advertisements sent since the last time, in their order.
    QStringList sent() const
    {
        QStringList ids;
        for (const auto &message : connector->takeSent()) {
            EXPECT_EQ(message.type, Type::ShowAd);
            ids.append(message.data.value("id", "stream").toString());
        }
        return ids;
    }
};

TEST_F(AdCycle, Four_results_play_three_advertisements_and_the_first_again)
{
    play({ad("1"), ad("2"), ad("3")});
    for (int i = 0; i < 4; ++i)
        report(true);
    EXPECT_EQ(sent(), (QStringList{"1", "2", "3", "1", "2"}));
}

TEST_F(AdCycle, A_failed_advertisement_is_removed_and_the_next_one_sent)
{
    play({ad("1"), ad("2")});
    report(false);
    EXPECT_EQ(sent(), (QStringList{"1", "2"}));
    EXPECT_EQ(connector->adTimetable, QList<QVariant>{ad("2")});
    report(true);
    EXPECT_EQ(sent(), QStringList{"2"});
}

TEST_F(AdCycle, After_the_last_one_failed_the_first_is_sent)
{
    play({ad("1"), ad("2")});
    report(true);
    report(false);
    EXPECT_EQ(sent(), (QStringList{"1", "2", "1"}));
    EXPECT_EQ(connector->currentAd, 0);
}

TEST_F(AdCycle, A_failed_one_in_the_middle_is_followed_by_the_next)
{
    play({ad("1"), ad("2"), ad("3")});
    report(true);
    report(false);
    report(true);
    report(true);
    EXPECT_EQ(sent(), (QStringList{"1", "2", "3", "1", "3"}));
}

TEST_F(AdCycle, When_the_only_one_of_the_settings_fails_nothing_more_is_sent)
{
    host.config().setValue("View.ADTimetable.other:index", 1); // which is not read again
    play({ad("1")});
    report(false);
    EXPECT_EQ(sent(), QStringList{"1"});
    EXPECT_EQ(log.textsOf("viewconnector"), QStringList(2, "Отправляем рекламу"));
    EXPECT_TRUE(connector->adTimetable.isEmpty());
    report(true);
    report(false);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(AdCycle, When_the_stream_fails_the_timetable_of_the_settings_is_played_from_its_first)
{
    host.config().setValue("View.ADTimetable.b:index", 2);
    host.config().setValue("View.ADTimetable.a:index", 1);
    play({stream});
    report(false);
    EXPECT_EQ(sent(), (QStringList{"stream", "a"}));
    EXPECT_EQ(connector->adTimetable.size(), 2);
    report(true);
    EXPECT_EQ(sent(), QStringList{"b"});
}

TEST_F(AdCycle, When_the_stream_fails_without_a_timetable_nothing_more_is_sent)
{
    play({stream});
    report(false);
    EXPECT_EQ(sent(), QStringList{"stream"});
    EXPECT_TRUE(connector->adTimetable.isEmpty());
    EXPECT_EQ(connector->currentAd, 0);
    report(false);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(AdCycle, When_a_stream_among_others_fails_the_settings_are_not_read)
{
    host.config().setValue("View.ADTimetable.settings:index", 1);
    play({stream, ad("2")});
    report(false);
    EXPECT_EQ(sent(), (QStringList{"stream", "2"}));
}

TEST_F(AdCycle, A_shown_stream_is_sent_again)
{
    play({stream});
    report(true);
    EXPECT_EQ(sent(), (QStringList{"stream", "stream"}));
}

TEST_F(AdCycle, Only_the_scheme_ads_marks_a_stream)
{
    host.config().setValue("View.ADTimetable.settings:index", 1);
    const std::pair<QVariant, bool> rows[] = {
        {"ads://host", true},
        {QUrl("ads://host"), true},
        {"ads:", true},
        {"ADS://host", true}, // an address has its scheme in small letters
        {"adss://host", false},
        {"http://ads/", false},
        {"", false},
        {QVariant(), false},
        {"ads", false},
        {"//ads", false},
        {"http://x/?u=ads://", false},
    };
    for (const auto &[url, isStream] : rows) {
        SCOPED_TRACE(url.toString().toStdString());
        play({ad("1", url)});
        report(false);
        EXPECT_EQ(connector->adTimetable.isEmpty(), !isStream);
    }
}

TEST_F(AdCycle, Everything_but_true_is_a_failure)
{
    const QJsonValue rows[] = {QJsonValue::Undefined, QJsonValue::Null, false, 1, "true",
                               QJsonArray{true},      QJsonObject{}};
    for (const auto &value : rows) {
        play({ad("1"), ad("2")});
        connector->takeSent();
        report(value);
        EXPECT_EQ(connector->adTimetable, QList<QVariant>{ad("2")});
        EXPECT_EQ(sent(), QStringList{"2"});
    }
}

TEST_F(AdCycle, The_message_is_the_entry_unchanged)
{
    const QVariantMap odd{{"id", "x"}, {"index", 5}, {"url", ""}, {"time", 1}, {"more", "kept"}};
    play({odd});
    EXPECT_EQ(connector->sent, QList{view::Message(Type::ShowAd, odd)});
}

TEST_F(AdCycle, One_that_still_waits_is_replaced_by_the_next)
{
    play({ad("1"), ad("2")});
    report(true);
    EXPECT_EQ(takeWaiting(), QList{view::Message(Type::ShowAd, ad("2"))});
}

TEST_F(AdCycle, Each_sending_is_logged_even_if_there_is_nothing_to_send)
{
    play({});
    play({ad("1")});
    report(true);
    const auto lines = log.lines();
    ASSERT_EQ(lines.size(), 3);
    for (const auto &line : lines) {
        EXPECT_EQ(line.text, "Отправляем рекламу");
        EXPECT_EQ(line.level, QtDebugMsg);
        EXPECT_EQ(line.logger, "viewconnector");
    }
}

TEST_F(AdCycle, A_result_without_a_timetable_is_ignored_without_a_line)
{
    report(true);
    report(false);
    EXPECT_EQ(sent(), QStringList());
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(AdCycle, Another_holder_of_the_list_neither_sees_nor_disturbs_the_cycle)
{
    play({ad("1"), ad("2"), ad("3")});
    const auto copy = connector->adTimetable;
    report(true);
    report(false);
    report(true);
    EXPECT_EQ(sent(), (QStringList{"1", "2", "3", "1"}));
    EXPECT_EQ(copy.size(), 3);
}

TEST_F(AdCycle, A_list_that_became_longer_is_played_to_its_new_end)
{
    play({ad("1")});
    connector->adTimetable.append(ad("2"));
    connector->adTimetable.reserve(1000);
    report(true);
    report(true);
    EXPECT_EQ(sent(), (QStringList{"1", "2", "1"}));
}

TEST_F(AdCycle, A_list_that_became_shorter_is_played_from_its_first)
{
    for (const bool shown : {true, false}) {
        play({ad("1"), ad("2"), ad("3")});
        report(true);
        report(true);
        connector->adTimetable = {ad("new")};
        connector->takeSent();
        report(shown);
        EXPECT_EQ(sent(), QStringList{"new"});
    }
}

TEST_F(AdCycle, A_failure_when_the_list_became_as_short_as_its_index_removes_nothing)
{
    play({ad("1"), ad("2"), ad("3")});
    report(true);
    report(true);
    connector->adTimetable = {ad("new"), ad("newer")};
    connector->takeSent();
    report(false);
    EXPECT_EQ(sent(), QStringList{"new"});
    EXPECT_EQ(connector->adTimetable.size(), 2);
}

TEST_F(AdCycle, The_display_drives_it_by_its_results)
{
    host.config().setValue("View.ADTimetable.a:index", 1);
    host.config().setValue("View.ADTimetable.b:index", 2);
    host.config().setValue("View.ADTimetable.b:url", "http://ads.example/b.svg");
    connector->init();
    ASSERT_TRUE(waitUntilAllSent());
    post(connector->server->port(), R"({"type":"result","name":"adResult","value":true})");
    ASSERT_TRUE(waitUntilAllSent());
    post(connector->server->port(), R"({"type":"result","name":"adResult","value":false})");
    ASSERT_TRUE(waitUntilAllSent());

    EXPECT_EQ(rest->paths(), (QStringList{"/configure", "/showAD", "/showAD", "/showAD"}));
    EXPECT_EQ(QJsonDocument::fromJson(rest->posts().at(2).body).object(),
              (QJsonObject{
                  {"id", "b"}, {"index", 2}, {"url", "http://ads.example/b.svg"}, {"time", 60}}));
    EXPECT_EQ(connector->adTimetable.size(), 1);
}

} // namespace
