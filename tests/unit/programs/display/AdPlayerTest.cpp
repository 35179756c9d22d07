#include <display/AdPlayer.h>

#include <support/PrintQt.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>

namespace {

using namespace std::chrono_literals;
using support::ScriptedAnswer;

const QByteArray png = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
const QString dataAddress = "data:image/png;base64," + png.toBase64();

ScriptedAnswer ok(const QByteArray &body)
{
    return ScriptedAnswer::ok(body);
}

QByteArray streamPart(const QByteArray &content)
{
    return "--f\r\nContent-Type: image/png\r\nContent-Length: " +
           QByteArray::number(content.size()) + "\r\n\r\n" + content + "\r\n";
}

ScriptedAnswer stream(const QByteArray &parts)
{
    return {.bytes = "HTTP/1.1 200 OK\r\nContent-Type: multipart/x-mixed-replace; boundary=f\r\n"
                     "Connection: close\r\n\r\n" +
                     parts};
}

class AdPlayerTest : public testing::Test
{
protected:
    explicit AdPlayerTest(std::chrono::milliseconds patience = 300ms) : player(patience) {}

    void play(const QString &url, int seconds = 1)
    {
        player.play({{"url", url}, {"time", seconds}});
    }
    QString address(const QString &path = "/ad") const { return server.url(path).toString(); }
    QString streamAddress() const
    {
        return QString("ads://127.0.0.1:%1?stream=3&key=a%26b").arg(server.port());
    }

    /// Plays and returns what was reported; it must be reported once.
    bool outcomeOf(const QString &url)
    {
        QSignalSpy finished(&player, &AdPlayer::finished);
        play(url);
        EXPECT_TRUE(support::waitFor([&] { return !finished.isEmpty(); }));
        support::letPass(1ms);
        EXPECT_EQ(finished.size(), 1);
        return !finished.isEmpty() && finished.constFirst().constFirst().toBool();
    }

    support::ScriptedServer server;
    AdPlayer player;
};

/// For streams that must not break off, however busy the machine is.
class PatientAdPlayerTest : public AdPlayerTest
{
protected:
    PatientAdPlayerTest() : AdPlayerTest(10s) {}
};

} // namespace

TEST_F(AdPlayerTest, A_picture_is_shown_for_its_time)
{
    EXPECT_FALSE(outcomeOf("nonsense")); // leaves a reason behind
    server.answer(ok(png));
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
        server.answer(ok(content));
        EXPECT_TRUE(outcomeOf(address()))
            << content.toHex().toStdString() << ' ' << player.reason().toStdString();
    }
}

TEST_F(AdPlayerTest, What_cannot_be_loaded_has_failed_at_once)
{
    const std::pair<const char *, ScriptedAnswer> rows[] = {
        {"not found", ScriptedAnswer::status(404)},
        {"an error", ScriptedAnswer::status(500)},
        {"nothing", ok("")},
        {"a page", ok("<!DOCTYPE html><html><body>Not found</body></html>")},
        {"a text", ok("not found")},
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
}

TEST_F(AdPlayerTest, A_film_of_64_MiB_is_shown)
{
    server.answer(ok(png + QByteArray(67'108'864 - png.size(), 'x')));
    EXPECT_TRUE(outcomeOf(address())) << player.reason().toStdString();
}

TEST_F(AdPlayerTest, A_content_without_an_end_has_failed)
{
    server.answer(ScriptedAnswer::endlessBody());
    EXPECT_FALSE(outcomeOf(address()));
    EXPECT_TRUE(player.reason().contains("larger")) << player.reason().toStdString();
}

TEST_F(AdPlayerTest, Of_one_that_another_takes_the_place_of_nothing_is_reported)
{
    server.answer(ok(png));
    QSignalSpy finished(&player, &AdPlayer::finished);
    play(address("/shown"));
    ASSERT_TRUE(support::waitFor([&] { return server.requestCount() == 1; }));
    support::letPass(100ms);
    server.answer(ScriptedAnswer::blackHole());
    play(address("/loading"));
    support::letPass(100ms);
    server.answer(ok(png));
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

TEST_F(AdPlayerTest, A_stream_is_fetched_by_number_and_key_and_counted_by_pictures)
{
    auto answer = stream(streamPart(png) + streamPart(png));
    answer.closes = true;
    server.answer(answer);
    EXPECT_FALSE(outcomeOf(streamAddress()));
    EXPECT_EQ(player.reason(), "the stream has ended");
    EXPECT_EQ(player.streamPictures(), 2);
    EXPECT_EQ(server.requests().constFirst().path, "/streams/3?key=a%26b");
}

TEST_F(PatientAdPlayerTest, A_stream_goes_on_beyond_the_time_of_a_picture)
{
    auto answer = stream({});
    answer.repeated = streamPart(png);
    answer.pause = 50ms;
    server.answer(answer);
    QSignalSpy finished(&player, &AdPlayer::finished);
    play(streamAddress(), 1);
    ASSERT_TRUE(support::waitFor([&] { return player.streamPictures() >= 25; }));
    EXPECT_TRUE(finished.isEmpty());
    server.goDown();
    ASSERT_TRUE(support::waitFor([&] { return !finished.isEmpty(); }));
    EXPECT_FALSE(finished.constFirst().constFirst().toBool());
}

TEST_F(PatientAdPlayerTest, A_stream_is_not_ended_by_the_time_of_the_picture_before)
{
    auto answer = stream({});
    answer.repeated = streamPart(png);
    answer.pause = 50ms;
    server.answer(answer);
    QSignalSpy finished(&player, &AdPlayer::finished);
    play(dataAddress);
    support::letPass(100ms);
    play(streamAddress());
    ASSERT_TRUE(support::waitFor([&] { return player.streamPictures() >= 25; }));
    EXPECT_TRUE(finished.isEmpty());
}

TEST_F(AdPlayerTest, A_picture_is_not_ended_by_the_silence_of_the_stream_before)
{
    server.answer(stream(streamPart(png)));
    play(streamAddress());
    ASSERT_TRUE(support::waitFor([&] { return player.streamPictures() == 1; }));
    EXPECT_TRUE(outcomeOf(dataAddress)) << player.reason().toStdString();
}

TEST_F(AdPlayerTest, A_stream_starts_anew_where_another_broke_off_in_a_picture)
{
    server.answer(stream(streamPart(png) + streamPart(png).chopped(5)));
    play(streamAddress());
    ASSERT_TRUE(support::waitFor([&] { return player.streamPictures() == 1; }));
    play(streamAddress());
    EXPECT_TRUE(support::waitFor([&] { return player.streamPictures() == 2; }));
}

TEST_F(AdPlayerTest, A_stream_that_stalls_has_failed)
{
    server.answer(stream(streamPart(png)));
    EXPECT_FALSE(outcomeOf(streamAddress()));
    EXPECT_EQ(player.streamPictures(), 1);
}

TEST_F(AdPlayerTest, A_stream_that_has_failed_is_not_reported_again_for_its_silence)
{
    server.answer(ok(png));
    QSignalSpy finished(&player, &AdPlayer::finished);
    play(streamAddress());
    ASSERT_TRUE(support::waitFor([&] { return !finished.isEmpty(); }));
    support::letPass(500ms);
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(AdPlayerTest, A_stream_that_only_drips_has_failed)
{
    auto answer = stream("--f\r\nContent-Length: 1000\r\n\r\n");
    answer.repeated = "x";
    answer.pause = 50ms;
    server.answer(answer);
    EXPECT_FALSE(outcomeOf(streamAddress()));
    EXPECT_EQ(player.reason(), "the stream has stalled");
}

TEST_F(AdPlayerTest, What_is_no_stream_of_pictures_has_failed)
{
    for (const auto &answer : {ok(png), stream("--g\r\n\r\n"), stream(streamPart("a text"))}) {
        server.answer(answer);
        EXPECT_FALSE(outcomeOf(streamAddress()));
        EXPECT_EQ(player.reason(), "not a stream of pictures");
    }
}

TEST_F(AdPlayerTest, A_stream_whose_key_is_refused_has_failed)
{
    server.answer(ScriptedAnswer::status(403));
    EXPECT_FALSE(outcomeOf(streamAddress()));
    EXPECT_TRUE(player.reason().contains("server replied")) << player.reason().toStdString();
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
