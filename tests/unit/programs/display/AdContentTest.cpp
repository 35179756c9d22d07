// What the player has to be shown by somebody else.

#include <display/AdPlayer.h>

#include <support/PrintQt.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using Kind = AdContent::Kind;
using support::ScriptedAnswer;

const QByteArray png = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
const QString pictureAddress = "data:image/png;base64," + png.toBase64();

class AdContentTest : public testing::Test
{
protected:
    void play(const QString &url, int seconds = 600)
    {
        player.play({{"url", url}, {"time", seconds}});
    }

    bool waitFor(Kind kind) const
    {
        return support::waitFor([&] { return player.content().kind == kind; });
    }

    AdPlayer player{300ms};
    QSignalSpy changed{&player, &AdPlayer::contentChanged};
    QSignalSpy finished{&player, &AdPlayer::finished};
};

} // namespace

TEST_F(AdContentTest, Is_none_before_the_first_advertisement)
{
    EXPECT_EQ(player.content().kind, Kind::None);
}

TEST_F(AdContentTest, Is_loading_and_then_the_picture_with_its_type)
{
    play(pictureAddress);
    EXPECT_EQ(player.content().kind, Kind::Loading);
    EXPECT_EQ(changed.size(), 1);
    ASSERT_TRUE(waitFor(Kind::Picture));
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(player.content().bytes, png);
    EXPECT_EQ(player.content().mimeType, "image/png");
}

TEST_F(AdContentTest, Stays_after_its_time_until_the_next_one)
{
    play(pictureAddress, 1);
    ASSERT_TRUE(support::waitFor([&] { return !finished.isEmpty(); }));
    EXPECT_EQ(player.content().kind, Kind::Picture);
}

TEST_F(AdContentTest, Is_none_once_it_has_failed)
{
    play("http://127.0.0.1:1/");
    ASSERT_TRUE(support::waitFor([&] { return !finished.isEmpty(); }));
    EXPECT_EQ(player.content().kind, Kind::None);
}

TEST_F(AdContentTest, Is_the_last_picture_of_a_stream_with_its_number)
{
    const auto part =
        "--f\r\nContent-Length: " + QByteArray::number(png.size()) + "\r\n\r\n" + png + "\r\n";
    support::ScriptedServer server;
    server.answerNext({{.bytes = "HTTP/1.1 200 OK\r\nContent-Type: multipart/x-mixed-replace; "
                                 "boundary=f\r\nConnection: close\r\n\r\n" +
                                 part + part}});
    int lastFrame = 0;
    QObject::connect(&player, &AdPlayer::contentChanged, &player, [&] {
        if (player.content().kind != Kind::Stream)
            return;
        lastFrame = player.content().frame;
        EXPECT_EQ(player.content().bytes, png);
        EXPECT_EQ(player.content().mimeType, "image/png");
    });
    play(QString("ads://127.0.0.1:%1?stream=1&key=k").arg(server.port()));
    EXPECT_TRUE(support::waitFor([&] { return lastFrame == 2; }));
}

TEST_F(AdContentTest, Makes_the_advertisement_fail_if_it_cannot_be_shown)
{
    play(pictureAddress);
    ASSERT_TRUE(waitFor(Kind::Picture));
    player.fail("cannot be decoded");
    ASSERT_EQ(finished.size(), 1);
    EXPECT_FALSE(finished.constFirst().constFirst().toBool());
    EXPECT_EQ(player.reason(), "cannot be decoded");
    EXPECT_EQ(player.content().kind, Kind::None);
    player.fail("once more");
    EXPECT_EQ(finished.size(), 1) << "it has failed already";
}

TEST_F(AdContentTest, Is_none_after_a_stop_of_which_nothing_is_told)
{
    play(pictureAddress, 1);
    ASSERT_TRUE(waitFor(Kind::Picture));
    player.stop();
    EXPECT_EQ(player.content().kind, Kind::None);
    support::letPass(1200ms);
    EXPECT_TRUE(finished.isEmpty());
}
