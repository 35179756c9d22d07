#include <display/Journal.h>

#include <common/MonotonicClock.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

QJsonArray entriesOf(const Journal &journal)
{
    return QJsonDocument::fromJson(journal.toJson()).array();
}

QJsonObject last(const Journal &journal)
{
    return entriesOf(journal).last().toObject();
}

} // namespace

TEST(Journal, Holds_a_message_with_what_became_of_it)
{
    Journal journal;
    journal.addMessage(
        {5, "Content", "/content", QJsonObject{{"data", 1}}, 10, 200, {}, 100.5, 2.25, true});
    EXPECT_EQ(last(journal), (QJsonObject{{"id", 1},
                                          {"kind", "message"},
                                          {"n", 5},
                                          {"type", "Content"},
                                          {"path", "/content"},
                                          {"body", QJsonObject{{"data", 1}}},
                                          {"bytes", 10},
                                          {"status", 200},
                                          {"reason", ""},
                                          {"ms", 100.5},
                                          {"tookMs", 2.25},
                                          {"replay", true}}));
}

TEST(Journal, Holds_what_the_register_asked_for)
{
    Journal journal;
    journal.addAsked("Content", 99.5);
    EXPECT_EQ(last(journal),
              (QJsonObject{{"id", 1}, {"kind", "asked"}, {"type", "Content"}, {"ms", 99.5}}));
}

TEST(Journal, Holds_a_request_with_how_long_its_outcome_took)
{
    Journal journal;
    const double sentMs = monotonicMs() - 5;
    journal.addRequest({{"name", "getImage"}}, sentMs, false);
    const auto entry = last(journal);
    EXPECT_EQ(entry["kind"].toString(), "request");
    EXPECT_EQ(entry["name"].toString(), "getImage");
    EXPECT_EQ(entry["ms"].toDouble(), sentMs);
    EXPECT_GE(entry["tookMs"].toDouble(), 5);
    EXPECT_FALSE(entry["accepted"].toBool(true));
}

TEST(Journal, Tells_of_each_entry_under_a_number_of_its_own)
{
    Journal journal;
    const QSignalSpy added(&journal, &Journal::added);
    journal.addNote("first");
    journal.addNote("second");
    ASSERT_EQ(added.size(), 2);
    EXPECT_EQ(support::json(added[0][0].toByteArray())["id"].toInt(), 1);
    EXPECT_EQ(support::json(added[1][0].toByteArray()), last(journal));
    EXPECT_EQ(last(journal)["text"].toString(), "second");
}

TEST(Journal, Lets_the_oldest_entries_fall_out_beyond_their_number)
{
    Journal journal;
    for (std::size_t i = 0; i < Journal::maxEntries + 10; ++i)
        journal.addNote("x");
    EXPECT_EQ(entriesOf(journal).size(), qsizetype(Journal::maxEntries));
    EXPECT_EQ(entriesOf(journal).first()["id"].toInt(), 11);
}

TEST(Journal, Lets_the_oldest_entries_fall_out_beyond_their_bytes)
{
    Journal journal;
    const QJsonObject body{{"uri", QString(Journal::maxBytes / 4, 'x')}};
    for (int i = 0; i < 5; ++i)
        journal.addMessage({i, "ImageData", "/image", body, 1, 200, {}, 1, 1, false});
    EXPECT_EQ(entriesOf(journal).size(), 3);
    EXPECT_EQ(last(journal)["n"].toInt(), 4);
}

TEST(Journal, Holds_the_newest_entry_however_large_it_is)
{
    Journal journal;
    journal.addNote("small");
    const QJsonObject body{{"uri", QString(Journal::maxBytes, 'x')}};
    journal.addMessage({7, "ImageData", "/image", body, 1, 200, {}, 1, 1, false});
    EXPECT_EQ(entriesOf(journal).size(), 1);
    EXPECT_EQ(last(journal)["n"].toInt(), 7);
}
