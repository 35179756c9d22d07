#include <SecondScreen.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

TEST(SecondScreen, Reads_data_type_and_type_name)
{
    const QVariantMap data{{QStringLiteral("rows"), QVariantList{1, 2}}};
    const events::SecondScreen content(
        Event(266, {{QStringLiteral("data"), data},
                    {QStringLiteral("type"), 3},
                    {QStringLiteral("typeName"), QStringLiteral("Акция")}}));
    EXPECT_EQ(content.data(), QVariant(data));
    EXPECT_EQ(content.contentType(), 3);
    EXPECT_EQ(content.contentTypeStr(), QStringLiteral("Акция"));
}

TEST(SecondScreen, Is_empty_without_arguments)
{
    const events::SecondScreen content{Event(266)};
    EXPECT_FALSE(content.data().isValid());
    EXPECT_EQ(content.contentType(), 0);
    EXPECT_EQ(content.contentTypeStr(), QString());
}

TEST(SecondScreen, Converts_what_has_another_type)
{
    const events::SecondScreen content(Event(
        266, {{QStringLiteral("type"), QStringLiteral("7")}, {QStringLiteral("typeName"), 8}}));
    EXPECT_EQ(content.contentType(), 7);
    EXPECT_EQ(content.contentTypeStr(), QStringLiteral("8"));
}
