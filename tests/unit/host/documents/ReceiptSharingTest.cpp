#include <Receipt.h>

#include <QVariant>

#include <gtest/gtest.h>

namespace {

using Places = QList<qsizetype>;

/// A receipt of five positions and its positions as they were copied before a change.
class ReceiptSharing : public testing::Test
{
protected:
    ReceiptSharing()
    {
        for (int i = 0; i < 5; ++i)
            receipt.addPosition(position(100 * i));
        before = snapshot();
    }

    static Position position(qint64 price)
    {
        Position made;
        made.price = price;
        return made;
    }

    QVariantList snapshot() const { return receipt.property("positions").toList(); }

    /// Expects the maps at these places before to be the very ones that are at `after` now.
    void expectShared(const Places &placesBefore, const Places &placesAfter) const
    {
        const auto now = snapshot();
        ASSERT_EQ(placesBefore.size(), placesAfter.size());
        for (qsizetype i = 0; i < placesBefore.size(); ++i) {
            SCOPED_TRACE(testing::Message() << "position " << placesBefore[i] << " before");
            const auto old = before.at(placesBefore[i]).toMap();
            EXPECT_TRUE(now.at(placesAfter[i]).toMap().isSharedWith(old));
        }
    }

    Receipt receipt{1};
    QVariantList before;
};

} // namespace

TEST_F(ReceiptSharing, Copies_nothing_between_two_readings)
{
    expectShared({0, 1, 2, 3, 4}, {0, 1, 2, 3, 4});
}

TEST_F(ReceiptSharing, Keeps_all_earlier_positions_when_one_is_added)
{
    receipt.addPosition(position(7));
    expectShared({0, 1, 2, 3, 4}, {0, 1, 2, 3, 4});
    EXPECT_EQ(before.size(), 5);
}

TEST_F(ReceiptSharing, Keeps_all_other_positions_when_one_changes)
{
    receipt.setPosition(2, position(7));
    expectShared({0, 1, 3, 4}, {0, 1, 3, 4});
    EXPECT_FALSE(snapshot().at(2).toMap().isSharedWith(before.at(2).toMap()));
    EXPECT_EQ(before.at(2).toMap().value(QStringLiteral("price")), QVariant(200LL));
}

TEST_F(ReceiptSharing, Keeps_all_other_positions_when_one_is_voided)
{
    receipt.removePosition(1);
    expectShared({0, 2, 3, 4}, {0, 1, 2, 3});
}

TEST_F(ReceiptSharing, Keeps_all_positions_at_a_discount_and_at_a_payment)
{
    receipt.setDiscountPercent(10);
    receipt.addPayment(QStringLiteral("cash"), 5);
    expectShared({0, 1, 2, 3, 4}, {0, 1, 2, 3, 4});
}
