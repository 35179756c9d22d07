#include "CashierFixture.h"

namespace {

constexpr auto noArticle =
    "\"goods\" names no article of the shop: give a code or a bar code as text";
constexpr auto tooMuch = "\"quantity\" is too large: a receipt can be at most 21474836.47";

const WrongCommand wrongCommands[] = {
    {R"({"do":"open","number":"1"})", "\"number\" has the wrong type: give a whole number"},
    {R"({"do":"open","number":1.5})", "\"number\" has the wrong type: give a whole number"},
    {R"({"do":"sell"})", noArticle},
    {R"({"do":"sell","goods":""})", noArticle},
    {R"({"do":"sell","goods":null})", noArticle},
    {R"({"do":"sell","goods":"999"})", noArticle},
    {R"({"do":"sell","goods":["100"]})", noArticle},
    {R"({"do":"sell","goods":"100","quantity":"2"})",
     "\"quantity\" has the wrong type: give a number"},
    {R"({"do":"sell","goods":"100","quantity":0})", "\"quantity\" must be above 0"},
    {R"({"do":"sell","goods":"100","quantity":-1})", "\"quantity\" must be above 0"},
    {R"({"do":"sell","goods":"100","quantity":1e300})", tooMuch},
    {R"({"do":"sell","goods":"100","quantity":2147483.648})", tooMuch},
    {R"({"do":"sell","goods":"100","quantity":2147482.7})", tooMuch}, // with what is there
    {R"({"do":"void"})", "\"position\" is missing: give a whole number"},
    {R"({"do":"void","position":"1"})", "\"position\" has the wrong type: give a whole number"},
    {R"({"do":"void","position":0})", "there is no position 0: the receipt has 1"},
    {R"({"do":"void","position":2})", "there is no position 2: the receipt has 1"},
    {R"({"do":"void","position":-1})", "there is no position -1: the receipt has 1"},
    {R"({"do":"discount"})", "\"percent\" is missing: give a number"},
    {R"({"do":"discount","percent":"5"})", "\"percent\" has the wrong type: give a number"},
    {R"({"do":"discount","percent":-0.1})", "\"percent\" must be from 0 to 100"},
    {R"({"do":"discount","percent":100.1})", "\"percent\" must be from 0 to 100"},
    {R"({"do":"discount","percent":5,"position":2})", "there is no position 2: the receipt has 1"},
    {R"({"do":"discount","percent":5,"position":null})",
     "\"position\" has the wrong type: give a whole number"},
    {R"({"do":"discount","percent":500,"position":1})", "\"percent\" must be from 0 to 100"},
    {R"({"do":"pay","amount":-1})", "\"amount\" must not be below 0"},
    {R"({"do":"pay","amount":1.5})", "\"amount\" has the wrong type: give a whole number"},
    {R"({"do":"pay","kind":1})", "\"kind\" has the wrong type: give a text"},
    {R"({"do":"qr","text":1})", "\"text\" has the wrong type: give a text"},
    {R"({"do":"qr","amount":"1"})", "\"amount\" has the wrong type: give a whole number"},
    {R"({"do":"qr","timeout":null})", "\"timeout\" has the wrong type: give a whole number"},
    {R"({"do":"prices","goods":["100","999"]})", noArticle},
    {R"({"do":"prices","goods":"100"})", "\"goods\" has the wrong type: give a list"},
    {R"({"do":"prices","columns":"2"})", "\"columns\" has the wrong type: give a whole number"},
    {R"({"do":"scroll","to":1})", "\"to\" has the wrong type: give a text"},
    {R"({"do":"draft","kind":1})", "\"kind\" has the wrong type: give a text"},
    {R"({"do":"draft","amount":"1"})", "\"amount\" has the wrong type: give a whole number"},
    {R"({"do":"content","text":1})", "\"text\" has the wrong type: give a text"},
    {R"({"do":"content","hide":1})", "\"hide\" has the wrong type: give true or false"},
    {R"({"do":"close-dialog"})", "no dialog is open"},
    {R"({"do":"close-dialog","dialogId":"1"})",
     "\"dialogId\" has the wrong type: give a whole number"},
};

class WrongCashierCommand : public CashierFixture, public testing::WithParamInterface<WrongCommand>
{
protected:
    WrongCashierCommand()
    {
        does(R"({"do":"open"})");
        does(R"({"do":"sell","goods":"100"})");
        calls();
    }
};

} // namespace

TEST_P(WrongCashierCommand, Is_answered_with_the_field_and_the_mend_and_changes_nothing)
{
    const int revision = receipt().modelRevision();
    EXPECT_EQ(run(GetParam().command), QString::fromUtf8(GetParam().error));
    EXPECT_EQ(receipt().number(), 1);
    EXPECT_EQ(receipt().modelRevision(), revision);
    EXPECT_EQ(receipt().total(), 1000);
    EXPECT_TRUE(calls().isEmpty());
    does(R"({"do":"open"})");
    EXPECT_EQ(receipt().number(), 2);
}

INSTANTIATE_TEST_SUITE_P(Row, WrongCashierCommand, testing::ValuesIn(wrongCommands));
