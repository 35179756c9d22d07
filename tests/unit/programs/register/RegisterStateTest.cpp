#include "CashierFixture.h"

#include <register/RegisterState.h>

namespace {

class RegisterStateTest : public CashierFixture
{
protected:
    QJsonObject state() const { return registerState(till, cashier); }
};

} // namespace

TEST_F(RegisterStateTest, Is_empty_at_first)
{
    EXPECT_EQ(state(),
              support::json(R"({"display":"http://127.0.0.1:38080","receipt":null,"dialogs":[]})"));
}

TEST_F(RegisterStateTest, Holds_the_receipt_as_it_is_sent)
{
    does(R"({"do":"open","number":7})");
    does(R"({"do":"sell","goods":"100","quantity":2})");
    const auto receipt = state()["receipt"].toObject();
    EXPECT_EQ(receipt, till.documentAsSent());
    EXPECT_EQ(receipt["number"].toInt(), 7);
    EXPECT_EQ(receipt["total"].toInt(), 2000);
    till.setDocument({});
    EXPECT_TRUE(state()["receipt"].isNull());
}

TEST_F(RegisterStateTest, Holds_the_dialogs_that_are_open)
{
    does(R"({"do":"open"})");
    does(R"({"do":"qr"})");
    does(R"({"do":"prices"})");
    const auto qr = support::json(R"({"id":1,"kind":"qr"})");
    EXPECT_EQ(state()["dialogs"].toArray(),
              (QJsonArray{qr, support::json(R"({"id":2,"kind":"prices"})")}));
    does(R"({"do":"close-dialog"})");
    EXPECT_EQ(state()["dialogs"].toArray(), QJsonArray{qr});
}

TEST_F(RegisterStateTest, Holds_the_displays_address_of_the_settings)
{
    singletons.config().setValue("ViewConnector:server", "http://127.0.0.1:5000");
    EXPECT_EQ(state()["display"].toString(), "http://127.0.0.1:5000");
    singletons.config().setValue("ViewConnector:server", "");
    EXPECT_EQ(state()["display"].toString(), "http://127.0.0.1:38080");
}
