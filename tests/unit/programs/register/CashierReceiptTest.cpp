#include "CashierFixture.h"

namespace {

class CashierReceipt : public CashierFixture
{
protected:
    void openWith(const QByteArrayList &sales)
    {
        does(R"({"do":"open"})");
        for (const auto &sale : sales)
            does(sale);
        calls();
    }

    const QByteArray tea = R"({"do":"sell","goods":"100"})";
    const QByteArray sugar = R"({"do":"sell","goods":"101","quantity":1.5})";
};

} // namespace

TEST_F(CashierReceipt, Is_opened_with_the_next_number)
{
    does(R"({"do":"open"})");
    EXPECT_EQ(receipt().number(), 1);
    EXPECT_EQ(receipt().state(), "open");
    EXPECT_TRUE(receipt().positions().isEmpty());
    does(R"({"do":"open"})");
    EXPECT_EQ(receipt().number(), 2);
    does(R"({"do":"open","number":41})");
    EXPECT_EQ(receipt().number(), 41);
    does(R"({"do":"open"})");
    EXPECT_EQ(receipt().number(), 42);
    EXPECT_EQ(calls(), QStringList(4, "document"));
}

TEST_F(CashierReceipt, Counts_on_after_the_highest_number)
{
    does(R"({"do":"open","number":2147483647})");
    does(R"({"do":"open"})");
    EXPECT_EQ(receipt().number(), 1);
}

TEST_F(CashierReceipt, Gets_what_is_sold)
{
    openWith({});
    does(R"({"do":"sell","goods":"100"})");
    does(R"({"do":"sell","goods":"2100","quantity":1.5})");
    does(R"({"do":"sell","goods":100,"quantity":3})");
    EXPECT_EQ(calls(), QStringList(3, "action 1 197"));

    const auto positions = receipt().positions();
    ASSERT_EQ(positions.size(), 3);
    EXPECT_EQ(positions[0].name, "Чай");
    EXPECT_EQ(positions[0].barcode, "4600");
    EXPECT_EQ(positions[0].unit, "шт");
    EXPECT_EQ(positions[0].quantity, 1);
    EXPECT_EQ(positions[0].total(), 1000);
    EXPECT_EQ(positions[1].name, "Сахар");
    EXPECT_EQ(positions[1].unit, "кг");
    EXPECT_EQ(positions[1].total(), 149); // 148.5, rounded
    EXPECT_EQ(positions[2].total(), 3000);
    EXPECT_EQ(receipt().total(), 4149);
}

TEST_F(CashierReceipt, Loses_a_position_that_is_voided)
{
    openWith({tea, sugar, tea});
    does(R"({"do":"void","position":2})");
    ASSERT_EQ(receipt().positions().size(), 2);
    EXPECT_EQ(receipt().positions()[1].name, "Чай");
    EXPECT_EQ(receipt().total(), 2000);
    does(R"({"do":"void","position":2})");
    does(R"({"do":"void","position":1})");
    EXPECT_EQ(receipt().total(), 0);
    EXPECT_EQ(calls(), QStringList(3, "action 1 197"));
}

TEST_F(CashierReceipt, Takes_a_discount_on_a_position)
{
    openWith({tea, tea});
    does(R"({"do":"discount","position":2,"percent":12.5})");
    EXPECT_EQ(receipt().positions()[0].discountSum(), 0);
    EXPECT_EQ(receipt().positions()[1].discountSum(), 125);
    EXPECT_EQ(receipt().discountSum(), 125);
    EXPECT_EQ(receipt().total(), 1875);
    does(R"({"do":"discount","position":2,"percent":0})");
    EXPECT_EQ(receipt().total(), 2000);
    EXPECT_EQ(calls(), QStringList(2, "action 1 197"));
}

TEST_F(CashierReceipt, Takes_a_discount_on_the_whole_after_those_on_positions)
{
    openWith({tea, tea});
    does(R"({"do":"discount","position":1,"percent":50})");
    does(R"({"do":"discount","percent":10})");
    EXPECT_EQ(receipt().discountSum(), 500 + 150);
    EXPECT_EQ(receipt().total(), 1350);
    does(R"({"do":"discount","percent":100})");
    EXPECT_EQ(receipt().total(), 0);
}

TEST_F(CashierReceipt, Is_paid_in_cash_for_what_is_due_unless_told_otherwise)
{
    openWith({tea});
    does(R"({"do":"pay"})");
    EXPECT_EQ(receipt().state(), "paid");
    EXPECT_EQ(receipt().change(), 0);
    EXPECT_EQ(receipt().payments().value(0).toMap(),
              (QVariantMap{{"kind", "cash"}, {"amount", qint64(1000)}}));
    EXPECT_EQ(calls(), (QStringList{"action 6 131", "action 6 137"}));
}

TEST_F(CashierReceipt, Is_paid_in_parts_and_gives_change)
{
    openWith({tea, tea});
    does(R"({"do":"pay","kind":"card","amount":500})");
    EXPECT_EQ(receipt().state(), "open");
    EXPECT_EQ(receipt().due(), 1500);
    EXPECT_EQ(calls(), QStringList("action 6 131"));
    does(R"({"do":"pay","kind":"cash","amount":2000})");
    EXPECT_EQ(receipt().state(), "paid");
    EXPECT_EQ(receipt().change(), 500);
    EXPECT_EQ(receipt().payments().size(), 2);
    EXPECT_EQ(calls(), (QStringList{"action 6 131", "action 6 137"}));
}

TEST_F(CashierReceipt, May_cost_nothing)
{
    openWith({R"({"do":"sell","goods":"102"})"});
    does(R"({"do":"pay"})");
    EXPECT_TRUE(receipt().isPaid());
}

TEST_F(CashierReceipt, Is_closed_to_everything_once_it_is_paid)
{
    openWith({tea});
    does(R"({"do":"pay"})");
    calls();
    for (const auto *command : {R"({"do":"sell","goods":"100"})", R"({"do":"void","position":1})",
                                R"({"do":"discount","percent":1})", R"({"do":"pay"})",
                                R"({"do":"qr"})", R"({"do":"draft"})"})
        EXPECT_EQ(run(command), "no receipt is open: open one with {\"do\":\"open\"}") << command;
    EXPECT_TRUE(calls().isEmpty());
    does(R"({"do":"open"})");
    EXPECT_EQ(receipt().state(), "open");
}

TEST_F(CashierReceipt, Must_be_open_and_a_receipt)
{
    EXPECT_EQ(run(tea), "no receipt is open: open one with {\"do\":\"open\"}");
    till.setDocument(QSharedPointer<BasicDocument>::create());
    EXPECT_EQ(run(tea), "no receipt is open: open one with {\"do\":\"open\"}");
}
