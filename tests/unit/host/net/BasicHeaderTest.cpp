#include <BasicHeader.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

const auto type = QStringLiteral("Content-Type");
const auto json = QStringLiteral("application/json");
const auto html = QStringLiteral("text/html");

} // namespace

TEST(BasicHeader, Finds_a_field_whatever_the_case_of_its_name)
{
    BasicHeader header;
    header.addValue(QStringLiteral("X-Register"), QStringLiteral("Касса 5"));
    for (const auto *name : {"X-Register", "x-register", "X-REGISTER"})
        EXPECT_EQ(header.value(QLatin1String(name)), QStringLiteral("Касса 5")) << name;
}

TEST(BasicHeader, Finds_no_field_of_another_name_as_long)
{
    BasicHeader header;
    header.addValue(QStringLiteral("Host"), QStringLiteral("a"));
    EXPECT_TRUE(header.value(QStringLiteral("Date")).isNull());
    header.setValue(QStringLiteral("Date"), QStringLiteral("b"));
    EXPECT_EQ(header.value(QStringLiteral("Host")), QStringLiteral("a"));
    EXPECT_EQ(header.value(QStringLiteral("Date")), QStringLiteral("b"));
}

TEST(BasicHeader, Tells_a_missing_field_from_an_empty_one)
{
    BasicHeader header;
    header.addValue(QStringLiteral("Empty"), QStringLiteral(""));
    EXPECT_FALSE(header.value(QStringLiteral("Empty")).isNull());
    EXPECT_TRUE(header.value(QStringLiteral("Missing")).isNull());
}

TEST(BasicHeader, Keeps_fields_of_the_same_name_in_their_order)
{
    BasicHeader header;
    header.addValue(QStringLiteral("A"), QStringLiteral("1"));
    header.addValue(QStringLiteral("B"), QStringLiteral("2"));
    header.addValue(QStringLiteral("a"), QStringLiteral("3"));
    EXPECT_EQ(header.value(QStringLiteral("a")), QStringLiteral("1"));
    const QList<BasicHeader::Field> expected{{QStringLiteral("A"), QStringLiteral("1")},
                                             {QStringLiteral("B"), QStringLiteral("2")},
                                             {QStringLiteral("a"), QStringLiteral("3")}};
    EXPECT_EQ(header.fields(), expected);
}

TEST(BasicHeader, Replaces_all_fields_of_a_name_that_is_set)
{
    BasicHeader header;
    header.addValue(type, json);
    header.addValue(type.toUpper(), json);
    header.setValue(type.toLower(), html);
    EXPECT_EQ(header.fields(), (QList<BasicHeader::Field>{{type.toLower(), html}}));
}

TEST(BasicHeader, Has_a_content_type)
{
    BasicHeader header;
    EXPECT_EQ(header.contentType(), QString());
    header.setContentType(html);
    header.setContentType(json);
    EXPECT_EQ(header.contentType(), json);
    EXPECT_EQ(header.fields(), (QList<BasicHeader::Field>{{type, json}}));
}
