#include <ImageId.h>

#include <support/PrintQt.h>

#include <QHash>
#include <QMap>
#include <QMetaEnum>

#include <gtest/gtest.h>

namespace {

const ImageId milk(ImageId::GoodsCode, QStringLiteral("100"));
const QJsonObject milkJson{{QStringLiteral("type"), QStringLiteral("GoodsCode")},
                           {QStringLiteral("value"), QStringLiteral("100")}};

} // namespace

TEST(ImageId, Turns_into_JSON_and_back)
{
    EXPECT_EQ(milk.toJson(), milkJson);
    EXPECT_EQ(ImageId(milkJson), milk);

    const ImageId barcode(ImageId::Barcode, QStringLiteral("штрих-4600"));
    EXPECT_EQ(barcode.toJson()[QStringLiteral("type")].toString(), QStringLiteral("Barcode"));
    EXPECT_EQ(ImageId(barcode.toJson()), barcode);
}

TEST(ImageId, Reads_an_unknown_type_as_goods_code_and_a_missing_value_as_empty)
{
    const struct
    {
        QJsonObject json;
        ImageId expected;
    } rows[] = {
        {{}, ImageId()},
        {{{QStringLiteral("type"), QStringLiteral("Barcode")}}, ImageId(ImageId::Barcode, {})},
        {{{QStringLiteral("value"), QStringLiteral("100")}}, milk},
        {{{QStringLiteral("type"), QStringLiteral("Colour")},
          {QStringLiteral("value"), QStringLiteral("100")}},
         milk},
        {{{QStringLiteral("type"), QStringLiteral("barcode")},
          {QStringLiteral("value"), QStringLiteral("100")}},
         milk},
        {{{QStringLiteral("type"), 1}, {QStringLiteral("value"), QStringLiteral("100")}}, milk},
        {{{QStringLiteral("type"), QStringLiteral("GoodsCode")}, {QStringLiteral("value"), 100}},
         ImageId()},
    };
    int row = 0;
    for (const auto &[json, expected] : rows) {
        SCOPED_TRACE(row++);
        EXPECT_EQ(ImageId(json), expected);
    }
}

TEST(ImageId, Is_an_empty_goods_code_by_default)
{
    EXPECT_EQ(ImageId().type(), ImageId::GoodsCode);
    EXPECT_EQ(ImageId().value(), QString());
}

TEST(ImageId, Equals_only_the_same_type_and_value)
{
    EXPECT_TRUE(milk == ImageId(ImageId::GoodsCode, QStringLiteral("100")));
    EXPECT_FALSE(milk == ImageId(ImageId::Barcode, QStringLiteral("100")));
    EXPECT_FALSE(milk == ImageId(ImageId::GoodsCode, QStringLiteral("101")));
}

TEST(ImageId, Is_ordered_by_type_and_then_by_value)
{
    const QMap<ImageId, int> map{
        {ImageId(ImageId::Barcode, QStringLiteral("1")), 3},
        {ImageId(ImageId::GoodsCode, QStringLiteral("9")), 2},
        {ImageId(ImageId::GoodsCode, QStringLiteral("10")), 1},
    };
    EXPECT_EQ(map.values(), (QList<int>{1, 2, 3}));
    EXPECT_FALSE(milk < milk);
}

TEST(ImageId, Has_a_hash_of_type_and_value)
{
    EXPECT_EQ(qHash(milk), qHash(ImageId(milkJson)));
    EXPECT_NE(qHash(milk), qHash(ImageId(ImageId::Barcode, milk.value())));
    EXPECT_NE(qHash(milk), qHash(ImageId(ImageId::GoodsCode, QStringLiteral("101"))));
    EXPECT_NE(qHash(milk, 1), qHash(milk, 2));
    const QHash<ImageId, int> table{{milk, 5}};
    EXPECT_EQ(table.value(ImageId(milkJson)), 5);
}

TEST(ImageId, Has_the_type_numbers_that_the_display_knows)
{
    const auto types = QMetaEnum::fromType<ImageId::IdType>();
    EXPECT_EQ(types.keyCount(), 2);
    EXPECT_EQ(types.keyToValue("GoodsCode"), 0);
    EXPECT_EQ(types.keyToValue("Barcode"), 1);
}
