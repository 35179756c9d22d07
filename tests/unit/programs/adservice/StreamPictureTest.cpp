#include <adservice/StreamPicture.h>

#include <support/PrintQt.h>

#include <QSet>

#include <gtest/gtest.h>

TEST(StreamPicture, Is_a_JPEG_of_its_size)
{
    QImage image;
    ASSERT_TRUE(image.loadFromData(StreamPicture().jpeg(0), "JPEG"));
    EXPECT_EQ(image.size(), QSize(StreamPicture::width, StreamPicture::height));
}

TEST(StreamPicture, Moves_from_each_frame_to_the_next)
{
    const StreamPicture picture;
    for (int frame = 0; frame < StreamPicture::period; ++frame)
        EXPECT_NE(picture.image(frame), picture.image(frame + 1)) << frame;
}

TEST(StreamPicture, Starts_again_after_its_period)
{
    const StreamPicture picture;
    EXPECT_EQ(picture.image(3), picture.image(3 + StreamPicture::period));
    EXPECT_EQ(picture.jpeg(3), picture.jpeg(3 + StreamPicture::period));
}

TEST(StreamPicture, Shows_more_than_a_plain_area)
{
    const auto image = StreamPicture().image(0);
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 4)
        for (int x = 0; x < image.width(); x += 4)
            colours.insert(image.pixel(x, y));
    EXPECT_GT(colours.size(), 100);
}
