#include <display/MessageText.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

struct Row
{
    const char *name;
    const char *type;
    const char *body;
    const char *text;
};

const Row rows[] = {
    {"Configuration", "Configure", R"({"a":1,"b":2,"c":null})", "3 settings"},
    {"No_receipt", "UpdateDocument", "{}", "no receipt"},
    {"Another_document", "UpdateDocument", R"({"number":7})", R"({"number":7})"},
    {"Receipt_without_positions", "UpdateDocument", R"({"number":5,"positions":[],"total":0})",
     "receipt 5, positions 0, total 0.00"},
    {"Receipt", "UpdateDocument",
     R"({"number":5,"positions":[{},{"name":"Хлеб","quantity":1.5,"total":9735}],
         "discountSum":0,"total":12050,"state":"open"})",
     "receipt 5, positions 2, last Хлеб × 1.5 = 97.35, total 120.50"},
    {"Paid_receipt_with_discount", "UpdateDocument",
     R"({"number":6,"positions":[{"name":"Чай","quantity":1,"total":1000}],
         "discountSum":105,"total":895,"state":"paid","change":5})",
     "receipt 6, positions 1, last Чай × 1 = 10.00, discount 1.05, total 8.95, paid, change 0.05"},
    {"Qr_payment", "QrPayment", R"({"qrCode":"https://pay/1","amount":12050,"timeout":60})",
     "pay 120.50 within 60 s by https://pay/1"},
    {"Qr_payment_closed", "QrPayment", R"({"close":true})", "close"},
    {"Advertisement", "ShowAd", R"({"id":"a","url":"http://ads/1.png","time":15})",
     "http://ads/1.png for 15 s"},
    {"Price_list", "PriceList", R"({"title":"Прайс-лист","data":[{},{},{}],"columns":2})",
     "\"Прайс-лист\", 3 rows in 2 columns"},
    {"Price_list_scrolled", "PriceList", R"({"scroll":"down"})", "scroll down"},
    {"Price_list_closed", "PriceList", R"({"close":true})", "close"},
    {"Picture", "ImageData", R"({"id":{"type":"GoodsCode","value":"100"},"uri":"data:xyz"})",
     R"({"type":"GoodsCode","value":"100"}, 8 bytes of URI)"},
    {"Content", "Content", R"({"data":"Привет","type":"text","hide":false})",
     R"({"data":"Привет","hide":false,"type":"text"})"},
    {"Content_hidden", "Content", R"({"data":"","type":"text","hide":true})", "hide"},
    {"Payment_draft", "PaymentDraft", R"({"amount":100,"kind":"card"})",
     R"({"amount":100,"kind":"card"})"},
    {"Type_that_is_not_known", "Other", R"({"a":1})", R"({"a":1})"},
};

class MessageText : public testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(MessageText, Says_what_the_message_says)
{
    const auto &row = GetParam();
    EXPECT_EQ(describeMessage(row.type, support::json(row.body)), row.text);
}

INSTANTIATE_TEST_SUITE_P(Of, MessageText, testing::ValuesIn(rows),
                         [](const auto &row) { return row.param.name; });

TEST(MessageTexts, Are_shortened_at_60_characters)
{
    const QString exact(60, u'ы');
    EXPECT_EQ(describeMessage("ShowAd", {{"url", exact}, {"time", 1}}), exact + " for 1 s");
    EXPECT_EQ(describeMessage("ShowAd", {{"url", exact + u'ы'}, {"time", 1}}),
              QString(59, u'ы') + "… for 1 s");
    EXPECT_EQ(describeMessage("PaymentDraft", {{"text", exact}}).size(), 60);
}

TEST(MessageTexts, Are_one_line_whatever_the_message_holds)
{
    for (const auto *type : {"Configure", "QrPayment", "ShowAd", "PriceList", "ImageData",
                             "Content", "PaymentDraft", "UpdateDocument"}) {
        const QJsonObject odd{{"positions", 5},   {"qrCode", true}, {"url", QJsonValue()},
                              {"data", "a\nb"},   {"title", 1},     {"columns", "x"},
                              {"close", "false"}, {"id", "none"}};
        const auto text = describeMessage(type, odd);
        EXPECT_FALSE(text.isEmpty()) << type;
        EXPECT_FALSE(text.contains(u'\n')) << type;
    }
}
