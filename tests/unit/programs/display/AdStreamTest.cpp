// The streams that the player plays.

#include "AdPlayerFixture.h"

namespace {

class AdStreamTest : public AdPlayerFixture
{
};

/// For streams that must not break off, however busy the machine is.
class PatientAdStreamTest : public AdPlayerFixture
{
protected:
    PatientAdStreamTest() : AdPlayerFixture(10s) {}
};

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

} // namespace

TEST_F(AdStreamTest, A_stream_is_fetched_by_number_and_key_and_counted_by_pictures)
{
    auto answer = stream(streamPart(png) + streamPart(png));
    answer.closes = true;
    server.answer(answer);
    EXPECT_FALSE(outcomeOf(streamAddress()));
    EXPECT_EQ(player.reason(), "the stream has ended");
    EXPECT_EQ(player.streamPictures(), 2);
    EXPECT_EQ(server.requests().constFirst().path, "/streams/3?key=a%26b");
}

TEST_F(PatientAdStreamTest, A_stream_goes_on_beyond_the_time_of_a_picture)
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

TEST_F(PatientAdStreamTest, A_stream_is_not_ended_by_the_time_of_the_picture_before)
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

TEST_F(AdStreamTest, A_picture_is_not_ended_by_the_silence_of_the_stream_before)
{
    server.answer(stream(streamPart(png)));
    play(streamAddress());
    ASSERT_TRUE(support::waitFor([&] { return player.streamPictures() == 1; }));
    EXPECT_TRUE(outcomeOf(dataAddress)) << player.reason().toStdString();
}

TEST_F(AdStreamTest, A_stream_starts_anew_where_another_broke_off_in_a_picture)
{
    server.answer(stream(streamPart(png) + streamPart(png).chopped(5)));
    play(streamAddress());
    ASSERT_TRUE(support::waitFor([&] { return player.streamPictures() == 1; }));
    play(streamAddress());
    EXPECT_TRUE(support::waitFor([&] { return player.streamPictures() == 2; }));
}

TEST_F(AdStreamTest, A_stream_that_stalls_has_failed)
{
    server.answer(stream(streamPart(png)));
    EXPECT_FALSE(outcomeOf(streamAddress()));
    EXPECT_EQ(player.streamPictures(), 1);
}

TEST_F(AdStreamTest, A_stream_that_has_failed_is_not_reported_again_for_its_silence)
{
    server.answer(ScriptedAnswer::ok(png));
    QSignalSpy finished(&player, &AdPlayer::finished);
    play(streamAddress());
    ASSERT_TRUE(support::waitFor([&] { return !finished.isEmpty(); }));
    support::letPass(500ms);
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(AdStreamTest, A_stream_that_only_drips_has_failed)
{
    auto answer = stream("--f\r\nContent-Length: 1000\r\n\r\n");
    answer.repeated = "x";
    answer.pause = 50ms;
    server.answer(answer);
    EXPECT_FALSE(outcomeOf(streamAddress()));
    EXPECT_EQ(player.reason(), "the stream has stalled");
}

TEST_F(AdStreamTest, What_is_no_stream_of_pictures_has_failed)
{
    for (const auto &answer :
         {ScriptedAnswer::ok(png), stream("--g\r\n\r\n"), stream(streamPart("a text"))}) {
        server.answer(answer);
        EXPECT_FALSE(outcomeOf(streamAddress()));
        EXPECT_EQ(player.reason(), "not a stream of pictures");
    }
}

TEST_F(AdStreamTest, A_stream_whose_key_is_refused_has_failed)
{
    server.answer(ScriptedAnswer::status(403));
    EXPECT_FALSE(outcomeOf(streamAddress()));
    EXPECT_TRUE(player.reason().contains("server replied")) << player.reason().toStdString();
}
