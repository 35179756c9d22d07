#include <RequestHeader.h>

#include <support/PrintQt.h>

#include <QVariant>

#include <gtest/gtest.h>

TEST(RequestHeader, Has_the_method_and_the_path_that_it_was_made_with)
{
    const RequestHeader header(QStringLiteral("POST"), QStringLiteral("/a/b?c=d&e=%20"));
    EXPECT_EQ(header.method(), QStringLiteral("POST"));
    EXPECT_EQ(header.path(), QStringLiteral("/a/b?c=d&e=%20"));
    EXPECT_TRUE(header.fields().isEmpty());
}

TEST(RequestHeader, Is_empty_by_default)
{
    EXPECT_EQ(RequestHeader().method(), QString());
    EXPECT_EQ(RequestHeader().path(), QString());
}

TEST(RequestHeader, Travels_in_a_variant_with_its_fields)
{
    RequestHeader header(QStringLiteral("GET"), QStringLiteral("/"));
    header.setContentType(QStringLiteral("text/plain"));
    const auto copy = QVariant::fromValue(header).value<RequestHeader>();
    EXPECT_EQ(copy.method(), header.method());
    EXPECT_EQ(copy.contentType(), header.contentType());
}
