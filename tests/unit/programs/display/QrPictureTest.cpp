#include <display/QrPicture.h>

#include <gtest/gtest.h>

TEST(QrPicture, Is_SVG_with_a_quiet_zone_of_four_modules)
{
    const auto picture = qrPicture("1234567"); // the smallest code has 21 modules
    EXPECT_TRUE(
        picture.startsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 29 29\""));
    EXPECT_TRUE(picture.contains("M4 4h1v1h-1z")) << "the corner of a finder pattern";
    EXPECT_FALSE(picture.contains("M3 ")) << "a module in the quiet zone";
}

TEST(QrPicture, Holds_as_many_bytes_as_any_QR_code_can)
{
    EXPECT_FALSE(qrPicture(QString(2953, 'x')).isEmpty());
    EXPECT_TRUE(qrPicture(QString(2954, 'x')).isEmpty());
    EXPECT_FALSE(qrPicture(QString(1476, u'Ж')).isEmpty());
    EXPECT_TRUE(qrPicture(QString(1477, u'Ж')).isEmpty());
}

TEST(QrPicture, Is_empty_without_a_text)
{
    EXPECT_TRUE(qrPicture({}).isEmpty());
}
