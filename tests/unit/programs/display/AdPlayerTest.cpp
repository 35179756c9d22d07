#include "AdPlayerFixture.h"

#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

class AdPlayerTest : public AdPlayerFixture
{
};

class HurriedAdPlayer : public AdPlayerFixture
{
protected:
    HurriedAdPlayer() : AdPlayerFixture(1min, 500ms) {}
};

} // namespace

TEST_F(AdPlayerTest, A_picture_is_shown_for_its_time)
{
    EXPECT_FALSE(outcomeOf("nonsense")); // leaves a reason behind
    server.answer(ScriptedAnswer::ok(png));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(outcomeOf(address()));
    const auto shown = std::chrono::steady_clock::now() - start;
    EXPECT_GE(shown, 900ms); // the timer is a coarse one
    EXPECT_EQ(player.reason(), QString());
}

TEST_F(AdPlayerTest, Pictures_and_films_are_shown)
{
    const QByteArray contents[] = {png,
                                   QByteArray::fromHex("ffd8ffe000104a464946"),
                                   "GIF89a......",
                                   "<svg xmlns=\"http://www.w3.org/2000/svg\"/>",
                                   QByteArray::fromHex("000000186674797069736f6d00000200"),
                                   QByteArray::fromHex("1a45dfa3") + "....B\x82\x84webm"};
    for (const auto &content : contents) {
        server.answer(ScriptedAnswer::ok(content));
        EXPECT_TRUE(outcomeOf(address()))
            << content.toHex().toStdString() << ' ' << player.reason().toStdString();
    }
}

TEST_F(AdPlayerTest, What_cannot_be_loaded_has_failed_at_once)
{
    const std::pair<const char *, ScriptedAnswer> rows[] = {
        {"not found", ScriptedAnswer::status(404)},
        {"an error", ScriptedAnswer::status(500)},
        {"nothing", ScriptedAnswer::ok("")},
        {"a page", ScriptedAnswer::ok("<!DOCTYPE html><html><body>Not found</body></html>")},
        {"a text", ScriptedAnswer::ok("not found")},
        {"no HTTP", ScriptedAnswer::garbage()},
        {"a lost connection", ScriptedAnswer::closed()},
        {"half a picture", ScriptedAnswer::truncated()},
        {"no answer", ScriptedAnswer::blackHole()},
    };
    for (const auto &[name, answer] : rows) {
        SCOPED_TRACE(name);
        server.answer(answer);
        EXPECT_FALSE(outcomeOf(address()));
        EXPECT_FALSE(player.reason().isEmpty());
    }
    server.goDown();
    EXPECT_FALSE(outcomeOf(address()));
}

TEST_F(AdPlayerTest, An_address_that_is_none_has_failed)
{
    for (const char *url : {"", "nonsense", "gopher://host/", "file:///no/such/file", "ads://",
                            "ads://?stream=1&key=k", "http://"})
        EXPECT_FALSE(outcomeOf(url)) << url;
}

TEST_F(AdPlayerTest, A_file_and_a_data_address_are_shown)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("ad.png"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(png) > 0);
    file.close();
    EXPECT_TRUE(outcomeOf("file://" + file.fileName()));
    EXPECT_TRUE(outcomeOf(dataAddress));
    EXPECT_TRUE(outcomeOf("DATA:image/png;base64," + (png + QByteArray(3000, 'x')).toBase64()));
}

TEST_F(AdPlayerTest, A_film_of_64_MiB_is_shown)
{
    server.answer(ScriptedAnswer::ok(png + QByteArray(67'108'864 - png.size(), 'x')));
    EXPECT_TRUE(outcomeOf(address())) << player.reason().toStdString();
}

TEST_F(AdPlayerTest, A_content_without_an_end_has_failed)
{
    server.answer(ScriptedAnswer::endlessBody());
    EXPECT_FALSE(outcomeOf(address()));
    EXPECT_TRUE(player.reason().contains("larger")) << player.reason().toStdString();
}

TEST_F(AdPlayerTest, A_compressed_content_without_an_end_has_failed)
{
    const auto gzipHead = QByteArray::fromHex("1f8b08000000000000ff");
    const auto emptyBlocks = QByteArray::fromHex("000000ffff").repeated(10'000);
    server.answer({.bytes = "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\n\r\n" + gzipHead,
                   .repeated = emptyBlocks});
    EXPECT_FALSE(outcomeOf(address()));
    EXPECT_TRUE(player.reason().contains("larger")) << player.reason().toStdString();
}

TEST_F(AdPlayerTest, An_address_that_Qt_takes_minutes_for_has_failed_at_once)
{
    EXPECT_FALSE(outcomeOf("http://a" + QStringLiteral("\u0301\u0323").repeated(200'000)));
    EXPECT_TRUE(player.reason().contains("2048")) << player.reason().toStdString();
}

TEST_F(AdPlayerTest, Of_one_that_another_takes_the_place_of_nothing_is_reported)
{
    server.answer(ScriptedAnswer::ok(png));
    QSignalSpy finished(&player, &AdPlayer::finished);
    play(address("/shown"));
    ASSERT_TRUE(support::waitFor([&] { return server.requestCount() == 1; }));
    support::letPass(100ms);
    server.answer(ScriptedAnswer::blackHole());
    play(address("/loading"));
    support::letPass(100ms);
    server.answer(ScriptedAnswer::ok(png));
    play(address("/last"));
    ASSERT_TRUE(support::waitFor([&] { return !finished.isEmpty(); }));
    support::letPass(500ms);
    EXPECT_EQ(finished.size(), 1);
    EXPECT_EQ(server.requests().constLast().path, server.url("/last").path().toLatin1());
}

TEST_F(AdPlayerTest, A_time_below_a_second_is_a_second)
{
    for (const int seconds : {0, -5}) {
        QSignalSpy finished(&player, &AdPlayer::finished);
        const auto start = std::chrono::steady_clock::now();
        play(dataAddress, seconds);
        ASSERT_TRUE(support::waitFor([&] { return !finished.isEmpty(); }));
        EXPECT_GE(std::chrono::steady_clock::now() - start, 900ms);
    }
}

TEST_F(AdPlayerTest, A_time_beyond_what_a_timer_takes_is_not_cut_to_a_short_one)
{
    QSignalSpy finished(&player, &AdPlayer::finished);
    play(dataAddress, 4'294'968); // in milliseconds 704 more than 32 bits hold
    support::letPass(1000ms);
    EXPECT_TRUE(finished.isEmpty());
}

TEST_F(HurriedAdPlayer, What_comes_too_slowly_has_failed)
{
    server.answer(ScriptedAnswer::dripping(1ms));
    EXPECT_FALSE(outcomeOf(address()));
    EXPECT_EQ(player.reason(), "not loaded in time");
}

TEST_F(HurriedAdPlayer, What_has_come_in_time_is_shown_for_its_own)
{
    EXPECT_TRUE(outcomeOf(dataAddress)) << player.reason().toStdString();
}

TEST_F(AdPlayerTest, What_is_no_file_is_not_waited_for)
{
    const QTemporaryDir folder;
    const auto pipe = folder.filePath("pipe");
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    for (const auto &path : {pipe, folder.path(), folder.filePath("missing")}) {
        EXPECT_FALSE(outcomeOf("file://" + path));
        EXPECT_EQ(player.reason(), "there is no such file");
    }
}

TEST_F(AdPlayerTest, What_has_had_its_time_cannot_fail_any_more)
{
    EXPECT_TRUE(outcomeOf(dataAddress));
    const QSignalSpy finished(&player, &AdPlayer::finished);
    player.fail("too late");
    EXPECT_TRUE(finished.isEmpty());
    EXPECT_EQ(player.content().kind, AdContent::Kind::Picture);
}
