#include <ResponseHeader.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

TEST(ResponseHeader, Is_200_OK_by_default)
{
    const ResponseHeader header;
    EXPECT_EQ(header.status(), 200);
    EXPECT_EQ(header.reason(), QStringLiteral("OK"));
    EXPECT_EQ(header.majorVersion(), 1);
    EXPECT_EQ(header.minorVersion(), 1);
}

TEST(ResponseHeader, Has_the_status_line_that_was_set)
{
    ResponseHeader header;
    header.setContentType(QStringLiteral("text/plain"));
    header.setStatusLine(404, QStringLiteral("Not Found"), 2, 0);
    EXPECT_EQ(header.status(), 404);
    EXPECT_EQ(header.reason(), QStringLiteral("Not Found"));
    EXPECT_EQ(header.majorVersion(), 2);
    EXPECT_EQ(header.minorVersion(), 0);
    EXPECT_EQ(header.contentType(), QStringLiteral("text/plain"));
}
