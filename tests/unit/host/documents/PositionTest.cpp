#include <Position.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

TEST(Position, Rounds_its_sums_to_a_kopeck)
{
    const struct
    {
        qint64 price;
        double quantity;
        double discountPercent;
        qint64 sum;
        qint64 discountSum;
        qint64 total;
    } rows[] = {
        {100, 1, 0, 100, 0, 100},
        {100, 3, 10, 300, 30, 270},
        {9999, 0.333, 0, 3330, 0, 3330}, // 3329.667
        {1, 0.5, 0, 1, 0, 1},            // half a kopeck goes up
        {1, 0.499, 0, 0, 0, 0},
        {333, 1, 50, 333, 167, 166}, // 166.5 goes up to the buyer's favour
        {1000, 1, 33.3, 1000, 333, 667},
        {1000, 1, 100, 1000, 1000, 0},
        {100, 0, 10, 0, 0, 0},
        {123456789012, 2, 0, 246913578024, 0, 246913578024},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message()
                     << row.price << " x " << row.quantity << " - " << row.discountPercent << " %");
        Position position;
        position.price = row.price;
        position.quantity = row.quantity;
        position.discountPercent = row.discountPercent;
        EXPECT_EQ(position.sum(), row.sum);
        EXPECT_EQ(position.discountSum(), row.discountSum);
        EXPECT_EQ(position.total(), row.total);
    }
}

TEST(Position, Is_one_unit_for_nothing_by_default)
{
    EXPECT_EQ(Position().quantity, 1.0);
    EXPECT_EQ(Position().total(), 0);
}

TEST(Position, Turns_into_the_map_that_the_display_gets)
{
    Position position;
    position.code = QStringLiteral("100");
    position.barcode = QStringLiteral("4600000000017");
    position.name = QStringLiteral("Хлеб");
    position.unit = QStringLiteral("шт");
    position.price = 5000;
    position.quantity = 1.5;
    position.discountPercent = 10;
    const QVariantMap expected{
        {QStringLiteral("code"), QStringLiteral("100")},
        {QStringLiteral("barcode"), QStringLiteral("4600000000017")},
        {QStringLiteral("name"), QStringLiteral("Хлеб")},
        {QStringLiteral("unit"), QStringLiteral("шт")},
        {QStringLiteral("price"), 5000LL},
        {QStringLiteral("quantity"), 1.5},
        {QStringLiteral("sum"), 7500LL},
        {QStringLiteral("disc_perc"), 10.0},
        {QStringLiteral("disc_sum"), 750LL},
        {QStringLiteral("total"), 6750LL},
    };
    EXPECT_EQ(position.toMap(), expected);
}
