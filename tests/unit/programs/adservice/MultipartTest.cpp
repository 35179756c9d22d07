#include "Multipart.h"

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

QByteArray part(const QByteArray &content)
{
    return "Content-Type: image/jpeg\r\nContent-Length: " + QByteArray::number(content.size()) +
           "\r\n\r\n" + content;
}

} // namespace

TEST(Multipart, Gives_the_parts)
{
    const auto open = Multipart::parse(
        "--b\r\n" + part("one") + "\r\n--b\r\n" + part("\r\n--b") + "\r\n--b\r\n", "b");
    ASSERT_TRUE(open);
    EXPECT_EQ(open->jpegs, (QList<QByteArray>{"one", "\r\n--b"}));
    EXPECT_FALSE(open->isClosed);

    const auto closed = Multipart::parse("--b\r\n" + part("one") + "\r\n--b--\r\n", "b");
    ASSERT_TRUE(closed);
    EXPECT_EQ(closed->jpegs, QList<QByteArray>{"one"});
    EXPECT_TRUE(closed->isClosed);
}

TEST(Multipart, Is_read_strictly)
{
    const QByteArray malformed[] = {
        "",
        "\r\n--b\r\n" + part("one") + "\r\n--b--\r\n",
        "--c\r\n" + part("one") + "\r\n--c--\r\n",
        "--b\r\n" + part("one") + "--b--\r\n",
        "--b\r\n" + part("one") + "\r\n--b--",
        "--b\r\n" + part("one") + "\r\n--b",
        "--b\r\n" + part("one") + "\r\n--b--\r\nmore",
        "--b\r\n" + part("one").chopped(1),
        "--b\r\nContent-Type: image/png\r\nContent-Length: 3\r\n\r\none\r\n--b--\r\n",
        "--b\r\nContent-Type: image/jpeg\r\nContent-Length: 2\r\n\r\none\r\n--b--\r\n",
        "--b\r\nContent-Type: image/jpeg\r\nContent-Length: x\r\n\r\none\r\n--b--\r\n",
    };
    for (const auto &body : malformed)
        EXPECT_FALSE(Multipart::parse(body, "b")) << body.toStdString();
}
