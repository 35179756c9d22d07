#include "CashierFixture.h"

#include <Tr.h>

namespace {

class CashierDialogs : public CashierFixture
{
protected:
    void sellTea()
    {
        does(R"({"do":"open","number":5})");
        does(R"({"do":"sell","goods":"100"})");
        calls();
    }

    QStringList codesOfRows() const
    {
        QStringList codes;
        for (const auto &row : arguments()["data"].toList())
            codes.append(row.toMap()["code"].toString());
        return codes;
    }
};

} // namespace

TEST_F(CashierDialogs, Ask_for_what_is_due_by_a_code_of_the_receipt)
{
    sellTea();
    does(R"({"do":"qr"})");
    EXPECT_EQ(calls(), QStringList("event 184"));
    EXPECT_EQ(arguments(), (QVariantMap{{"dialogId", 1},
                                        {"qrCode", "https://pay.example.com/r/5?sum=1000"},
                                        {"amount", 1000},
                                        {"timeout", 60}}));
}

TEST_F(CashierDialogs, Ask_for_another_payment_if_told_to)
{
    sellTea();
    does(R"({"do":"qr","text":"pay me","amount":7,"timeout":90})");
    EXPECT_EQ(arguments(),
              (QVariantMap{{"dialogId", 1}, {"qrCode", "pay me"}, {"amount", 7}, {"timeout", 90}}));
}

TEST_F(CashierDialogs, Show_the_prices_of_the_whole_shop)
{
    does(R"({"do":"prices"})");
    EXPECT_EQ(calls(), QStringList("event 117"));
    EXPECT_EQ(arguments()["dialogId"], QVariant(1));
    EXPECT_EQ(arguments()["columns"], QVariant(2));
    EXPECT_EQ(arguments()["title"].value<tr::Tr>(),
              tr::Tr({{"ru", "Прайс-лист"}, {"en", "Price list"}}));
    EXPECT_EQ(codesOfRows(), (QStringList{"100", "101", "102"}));
    EXPECT_EQ(
        arguments()["data"].toList().value(1).toMap(),
        (QVariantMap{{"code", "101"}, {"name", "Сахар"}, {"unit", "кг"}, {"price", qint64(99)}}));
}

TEST_F(CashierDialogs, Show_the_prices_of_some_goods_in_the_order_given)
{
    does(R"({"do":"prices","goods":["2100","100"],"columns":3})");
    EXPECT_EQ(codesOfRows(), (QStringList{"101", "100"}));
    EXPECT_EQ(arguments()["columns"], QVariant(3));
}

TEST_F(CashierDialogs, Scroll_the_prices)
{
    does(R"({"do":"scroll"})");
    EXPECT_EQ(arguments(), (QVariantMap{{"scroll", "down"}}));
    does(R"({"do":"scroll","to":"up"})");
    EXPECT_EQ(arguments(), (QVariantMap{{"scroll", "up"}}));
    EXPECT_EQ(calls(), (QStringList{"event 117", "event 117"}));
}

TEST_F(CashierDialogs, Draft_a_payment_of_what_is_due)
{
    sellTea();
    does(R"({"do":"draft"})");
    EXPECT_EQ(calls(), QStringList("event 266"));
    EXPECT_EQ(
        arguments(),
        (QVariantMap{{"number", 5}, {"total", qint64(1000)}, {"kind", "card"}, {"amount", 1000}}));
    does(R"({"do":"draft","kind":"cash","amount":5000})");
    EXPECT_EQ(arguments()["kind"], QVariant("cash"));
    EXPECT_EQ(arguments()["amount"], QVariant(5000));
}

TEST_F(CashierDialogs, Show_and_hide_content)
{
    does(R"({"do":"content","text":"Привет"})");
    EXPECT_EQ(arguments(), (QVariantMap{{"data", "Привет"}, {"type", 1}, {"typeName", "text"}}));
    does(R"({"do":"content","hide":true})");
    EXPECT_EQ(arguments(), (QVariantMap{{"data", ""}, {"type", 0}, {"typeName", "text"}}));
    EXPECT_EQ(calls(), (QStringList{"event 261", "event 261"}));
}

TEST_F(CashierDialogs, Are_closed_the_newest_first)
{
    sellTea();
    does(R"({"do":"prices"})");
    does(R"({"do":"qr"})");
    calls();
    does(R"({"do":"close-dialog"})");
    EXPECT_EQ(arguments(), (QVariantMap{{"dialogId", 2}}));
    does(R"({"do":"close-dialog"})");
    EXPECT_EQ(arguments(), (QVariantMap{{"dialogId", 1}}));
    EXPECT_EQ(calls(), (QStringList{"event 103", "event 103"}));
    EXPECT_EQ(run(R"({"do":"close-dialog"})"), "no dialog is open");
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(CashierDialogs, Are_closed_by_their_id)
{
    does(R"({"do":"prices"})");
    does(R"({"do":"prices"})");
    does(R"({"do":"close-dialog","dialogId":1})");
    EXPECT_EQ(arguments(), (QVariantMap{{"dialogId", 1}}));
    does(R"({"do":"close-dialog"})");
    EXPECT_EQ(arguments(), (QVariantMap{{"dialogId", 2}}));
}

TEST_F(CashierDialogs, Are_told_of_even_if_the_register_knows_of_none)
{
    does(R"({"do":"close-dialog","dialogId":77})");
    EXPECT_EQ(arguments(), (QVariantMap{{"dialogId", 77}}));
}

TEST_F(CashierDialogs, Are_not_open_when_their_command_was_wrong)
{
    sellTea();
    for (const auto *command :
         {R"({"do":"qr","text":1})", R"({"do":"qr","amount":"x"})", R"({"do":"qr","timeout":"x"})",
          R"({"do":"prices","columns":"x"})", R"({"do":"prices","goods":["none"]})"}) {
        EXPECT_NE(run(command), "") << command;
        EXPECT_EQ(run(R"({"do":"close-dialog"})"), "no dialog is open") << command;
    }
    EXPECT_TRUE(calls().isEmpty());
}
