#include <Receipt.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

Position position(qint64 price, double quantity = 1, double discountPercent = 0)
{
    Position made;
    made.code = QString::number(price);
    made.price = price;
    made.quantity = quantity;
    made.discountPercent = discountPercent;
    return made;
}

void expectSums(const Receipt &receipt, qint64 sum, qint64 discountSum, qint64 total)
{
    EXPECT_EQ(receipt.property("sum"), QVariant(sum));
    EXPECT_EQ(receipt.property("discountSum"), QVariant(discountSum));
    EXPECT_EQ(receipt.property("total"), QVariant(total));
}

QString state(const Receipt &receipt)
{
    return receipt.property("state").toString();
}

} // namespace

TEST(Receipt, Is_open_and_empty_at_first)
{
    const Receipt receipt(42);
    EXPECT_EQ(receipt.property("number"), QVariant(42));
    EXPECT_EQ(state(receipt), QStringLiteral("open"));
    EXPECT_EQ(receipt.property("positions"), QVariant(QVariantList()));
    EXPECT_EQ(receipt.property("payments"), QVariant(QVariantList()));
    expectSums(receipt, 0, 0, 0);
}

TEST(Receipt, Sums_its_positions_with_their_discounts)
{
    Receipt receipt(1);
    receipt.addPosition(position(1000, 2));
    receipt.addPosition(position(500, 1, 10));
    expectSums(receipt, 2500, 50, 2450);
}

TEST(Receipt, Takes_its_own_discount_after_those_of_the_positions)
{
    Receipt receipt(1);
    receipt.addPosition(position(1000, 1, 50));
    receipt.setDiscountPercent(10);
    expectSums(receipt, 1000, 550, 450);
    receipt.addPosition(position(333));
    expectSums(receipt, 1333, 583, 750); // 10 % of 833 is 83.3
    receipt.setDiscountPercent(0);
    expectSums(receipt, 1333, 500, 833);
}

TEST(Receipt, Follows_a_changed_position)
{
    Receipt receipt(1);
    receipt.addPosition(position(1000));
    receipt.addPosition(position(500));
    receipt.setPosition(0, position(700, 2, 10));
    expectSums(receipt, 1900, 140, 1760);
    EXPECT_EQ(receipt.positions().at(0).price, 700);
    EXPECT_EQ(receipt.property("positions").toList().at(0), QVariant(position(700, 2, 10).toMap()));
    EXPECT_EQ(receipt.property("positions").toList().at(1), QVariant(position(500).toMap()));
}

TEST(Receipt, Forgets_a_voided_position)
{
    Receipt receipt(1);
    receipt.addPosition(position(1000, 1, 10));
    receipt.addPosition(position(500, 1, 20));
    receipt.removePosition(0);
    expectSums(receipt, 500, 100, 400);
    ASSERT_EQ(receipt.positions().size(), 1);
    EXPECT_EQ(receipt.property("positions"), QVariant(QVariantList{position(500, 1, 20).toMap()}));
    receipt.removePosition(0);
    expectSums(receipt, 0, 0, 0);
}

TEST(Receipt, Is_paid_when_the_payments_cover_it)
{
    Receipt receipt(1);
    receipt.addPosition(position(1000));
    EXPECT_EQ(receipt.due(), 1000);

    receipt.addPayment(QStringLiteral("card"), 400);
    EXPECT_EQ(state(receipt), QStringLiteral("open"));
    EXPECT_EQ(receipt.due(), 600);
    EXPECT_EQ(receipt.property("change"), QVariant(0LL));

    receipt.addPayment(QStringLiteral("cash"), 600);
    EXPECT_EQ(state(receipt), QStringLiteral("paid"));
    EXPECT_EQ(receipt.due(), 0);
    EXPECT_EQ(receipt.property("change"), QVariant(0LL));
}

TEST(Receipt, Gives_change_when_overpaid)
{
    Receipt receipt(1);
    receipt.addPosition(position(1000));
    receipt.setDiscountPercent(10);
    receipt.addPayment(QStringLiteral("cash"), 1000);
    EXPECT_EQ(state(receipt), QStringLiteral("paid"));
    EXPECT_EQ(receipt.property("change"), QVariant(100LL));
    EXPECT_EQ(receipt.due(), 0);
}

TEST(Receipt, Lists_its_payments_in_order)
{
    Receipt receipt(1);
    receipt.addPayment(QStringLiteral("qr"), 5);
    receipt.addPayment(QStringLiteral("cash"), 7);
    const QVariantList expected{
        QVariantMap{{QStringLiteral("kind"), QStringLiteral("qr")},
                    {QStringLiteral("amount"), 5LL}},
        QVariantMap{{QStringLiteral("kind"), QStringLiteral("cash")},
                    {QStringLiteral("amount"), 7LL}},
    };
    EXPECT_EQ(receipt.property("payments"), QVariant(expected));
}

TEST(Receipt, Counts_each_change_once)
{
    Receipt receipt(1);
    int revision = receipt.modelRevision();
    const auto expectChange = [&](const char *what) {
        EXPECT_EQ(receipt.modelRevision(), ++revision) << what;
    };
    receipt.addPosition(position(1000));
    expectChange("adding");
    receipt.setPosition(0, position(500));
    expectChange("changing");
    receipt.setDiscountPercent(5);
    expectChange("discount");
    receipt.addPayment(QStringLiteral("cash"), 1);
    expectChange("payment");
    receipt.removePosition(0);
    expectChange("voiding");
}
