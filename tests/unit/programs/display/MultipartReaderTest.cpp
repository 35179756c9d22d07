#include <display/MultipartReader.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

const QByteArray type = "multipart/x-mixed-replace; boundary=frame";

QByteArray part(const QByteArray &content)
{
    return "--frame\r\nContent-Type: image/png\r\nContent-Length: " +
           QByteArray::number(content.size()) + "\r\n\r\n" + content + "\r\n";
}

} // namespace

TEST(MultipartReader, Gives_each_part_when_its_last_byte_is_there)
{
    MultipartReader reader(type);
    const QByteArray stream = part("one") + part("") + part("three\r\n\r\n--frame");
    QList<QByteArray> parts;
    for (const char byte : stream)
        parts += reader.feed(QByteArray(1, byte));
    EXPECT_EQ(parts, (QList<QByteArray>{"one", "", "three\r\n\r\n--frame"}));
    EXPECT_FALSE(reader.hasFailed());
}

TEST(MultipartReader, Gives_several_parts_that_arrive_together)
{
    MultipartReader reader(type);
    EXPECT_EQ(reader.feed(part("one") + part("two") + part("three").chopped(3)),
              (QList<QByteArray>{"one", "two"}));
    EXPECT_EQ(reader.feed("e"), QList<QByteArray>{"three"});
}

TEST(MultipartReader, Knows_the_boundary_in_every_way_it_is_written)
{
    for (const char *contentType :
         {"multipart/x-mixed-replace;boundary=frame", "Multipart/Mixed; Boundary=\"frame\"",
          "multipart/x-mixed-replace; charset=x; boundary=frame; more=1",
          "multipart/x-mixed-replace; boundary=frame ; more=1"}) {
        MultipartReader reader(contentType);
        EXPECT_EQ(reader.feed(part("x")), QList<QByteArray>{"x"}) << contentType;
    }
}

TEST(MultipartReader, Fails_without_a_boundary)
{
    for (const char *contentType :
         {"", "image/png", "multipart/x-mixed-replace",
          "multipart/x-mixed-replace; boundary=", "text/plain; boundary=frame"}) {
        MultipartReader reader(contentType);
        EXPECT_TRUE(reader.hasFailed()) << contentType;
        EXPECT_TRUE(reader.feed(part("x")).isEmpty());
    }
}

TEST(MultipartReader, Fails_for_good_on_what_is_no_part)
{
    const char *streams[] = {
        "--other\r\nContent-Length: 1\r\n\r\nx",
        "--frames\r\nContent-Length: 1\r\n\r\nx",
        "--frame\r\nContent-Type: image/png\r\n\r\nx",
        "--frame\r\nContent-Length: -1\r\n\r\nx",
        "--frame\r\nContent-Length: many\r\n\r\nx",
        "--frame\r\nContent-Length: 8388609\r\n\r\nx",
        "--frame\r\nContent-Length: 99999999999999999999\r\n\r\nx",
        "--frame--\r\n\r\n",
        "\r\n\r\n",
    };
    for (const char *stream : streams) {
        SCOPED_TRACE(stream);
        MultipartReader reader(type);
        EXPECT_TRUE(reader.feed(stream).isEmpty());
        EXPECT_TRUE(reader.hasFailed());
        EXPECT_TRUE(reader.feed(part("x")).isEmpty());
    }
}

TEST(MultipartReader, Fails_for_good_on_a_header_of_more_than_8_KiB)
{
    MultipartReader reader(type);
    const QByteArray start = "--frame\r\nContent-Length: 1\r\nLong: ";
    reader.feed(start + QByteArray(8192 - start.size(), 'x'));
    EXPECT_FALSE(reader.hasFailed());
    reader.feed("x");
    EXPECT_TRUE(reader.hasFailed());
    EXPECT_TRUE(reader.feed("\r\n\r\nx").isEmpty());
    EXPECT_TRUE(reader.hasFailed());
}

TEST(MultipartReader, Takes_a_part_of_8_MiB)
{
    MultipartReader reader(type);
    const QByteArray content(8'388'608, 'x');
    EXPECT_EQ(reader.feed(part(content)).size(), 1);
}
