#include <adservice/PictureStream.h>

#include "Multipart.h"

#include <support/OutputCapture.h>
#include <support/PrintQt.h>

#include <QImage>

#include <gmock/gmock.h>

#include <future>

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

class PictureStreamTest : public testing::Test
{
protected:
    /// Everything that a stream gives, and what it prints, until it ends.
    void play(std::chrono::milliseconds frameTime, std::chrono::seconds duration)
    {
        printed = support::outputOf(stdout, [&] {
            PictureStream stream(frameTime, duration, ending.get_token());
            for (auto piece = stream.next(); !piece.isEmpty(); piece = stream.next())
                body += piece;
        });
    }

    std::stop_source ending;
    QByteArray body;
    QByteArray printed;
};

} // namespace

TEST_F(PictureStreamTest, Is_a_closed_multipart_message_of_moving_pictures)
{
    play(200ms, 1s);
    const auto message = Multipart::parse(body, "picture");
    ASSERT_TRUE(message);
    EXPECT_TRUE(message->isClosed);
    EXPECT_EQ(message->jpegs.size(), 5);
    QImage previous;
    for (const auto &jpeg : message->jpegs) {
        const auto image = QImage::fromData(jpeg, "JPEG");
        EXPECT_FALSE(image.isNull());
        EXPECT_NE(image, previous);
        previous = image;
    }
    EXPECT_EQ(QByteArray(PictureStream::contentType),
              "multipart/x-mixed-replace; boundary=picture");
}

TEST_F(PictureStreamTest, Lasts_as_long_as_it_was_told)
{
    const auto begin = Clock::now();
    play(250ms, 1s);
    EXPECT_GE(Clock::now() - begin, 1s);
    EXPECT_LT(Clock::now() - begin, 6s);
}

TEST_F(PictureStreamTest, Has_one_picture_when_the_next_would_come_too_late)
{
    play(2s, 1s);
    const auto message = Multipart::parse(body, "picture");
    ASSERT_TRUE(message);
    EXPECT_TRUE(message->isClosed);
    EXPECT_EQ(message->jpegs.size(), 1);
}

TEST_F(PictureStreamTest, Tells_its_start_and_its_end_with_the_number_of_pictures)
{
    play(500ms, 1s);
    const auto lines = printed.split('\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].endsWith("  Stream          started")) << lines[0].toStdString();
    EXPECT_TRUE(lines[1].endsWith("  Stream          ended, pictures: 2"))
        << lines[1].toStdString();
}

TEST_F(PictureStreamTest, Gives_the_first_picture_at_once_and_each_other_one_when_it_is_due)
{
    std::chrono::steady_clock::duration time{};
    support::outputOf(stdout, [&] {
        PictureStream stream(100ms, 0s, ending.get_token());
        const auto begin = Clock::now();
        for (int picture = 0; picture < 3; ++picture)
            body += stream.next();
        time = Clock::now() - begin;
    });
    EXPECT_GE(time, 199ms);
    const auto message = Multipart::parse(body, "picture");
    ASSERT_TRUE(message) << "each piece ends with the boundary that closes its part";
    EXPECT_EQ(message->jpegs.size(), 3);
    EXPECT_FALSE(message->isClosed);
}

TEST_F(PictureStreamTest, Does_not_make_up_for_pictures_that_a_slow_viewer_has_missed)
{
    bool waited = false;
    support::outputOf(stdout, [&] {
        PictureStream stream(100ms, 0s, ending.get_token());
        stream.next();
        std::this_thread::sleep_for(350ms); // three pictures' time
        stream.next();                      // late
        stream.next();                      // due now
        const auto before = Clock::now();
        stream.next();
        waited = Clock::now() - before >= 50ms;
    });
    EXPECT_TRUE(waited);
}

TEST_F(PictureStreamTest, Ends_at_once_when_a_stop_is_requested)
{
    using std::future_status;
    future_status before{};
    future_status after{};
    support::outputOf(stdout, [&] {
        PictureStream stream(1h, 0s, ending.get_token());
        stream.next();
        auto next = std::async(std::launch::async, [&] { return stream.next(); });
        before = next.wait_for(20ms);
        ending.request_stop();
        after = next.wait_for(10s);
        body = next.get();
    });
    EXPECT_EQ(before, future_status::timeout);
    EXPECT_EQ(after, future_status::ready);
    EXPECT_EQ(body, "");
}
