#include <display/Pictures.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

using support::json;

QJsonObject receipt(const QStringList &codes, int number = 1)
{
    QJsonArray positions;
    for (const auto &code : codes)
        positions.append(QJsonObject{{"code", code}, {"barcode", "46" + code}});
    return {{"number", number}, {"positions", positions}};
}

QStringList codesOf(const QList<QJsonObject> &requests)
{
    QStringList codes;
    for (const auto &request : requests)
        codes.append(request["data"]["GoodsCode"]["value"].toString());
    return codes;
}

} // namespace

TEST(Pictures, A_request_names_the_goods_by_code_and_bar_code)
{
    Pictures pictures;
    EXPECT_EQ(pictures.requestsFor(receipt({"100"})),
              QList{json(R"({"type":"request","name":"getImage","data":{
                  "GoodsCode":{"type":"GoodsCode","value":"100"},
                  "Barcode":{"type":"Barcode","value":"46100"}}})")});
}

TEST(Pictures, Each_is_asked_for_once_a_receipt)
{
    Pictures pictures;
    EXPECT_EQ(codesOf(pictures.requestsFor(receipt({"100"}))), QStringList{"100"});
    EXPECT_EQ(codesOf(pictures.requestsFor(receipt({"100", "101", "101"}))), QStringList{"101"});
    EXPECT_TRUE(pictures.requestsFor(receipt({"101", "100"})).isEmpty());
    EXPECT_EQ(codesOf(pictures.requestsFor(receipt({"100"}, 2))), QStringList{"100"});
    EXPECT_EQ(pictures.requested(), 3);
}

TEST(Pictures, After_a_start_of_the_register_all_are_asked_for_again)
{
    Pictures pictures;
    pictures.requestsFor(receipt({"100"}));
    pictures.configure({{"View.Style:showImages", true}});
    EXPECT_EQ(codesOf(pictures.requestsFor(receipt({"100"}))), QStringList{"100"});
}

TEST(Pictures, Without_pictures_on_the_display_none_is_asked_for)
{
    Pictures pictures;
    pictures.configure({{"View.Style:showImages", false}});
    EXPECT_TRUE(pictures.requestsFor(receipt({"100"})).isEmpty());
    pictures.configure({});
    EXPECT_TRUE(pictures.requestsFor(receipt({"100"})).isEmpty());
}

TEST(Pictures, In_the_touch_layout_its_own_switch_decides_whether_any_is_asked_for)
{
    const auto asks = [](const QJsonObject &settings) {
        Pictures pictures;
        pictures.configure(settings);
        return !pictures.requestsFor(receipt({"100"})).isEmpty();
    };
    const auto touch = QStringLiteral("View.Interface:touchng");
    const auto common = QStringLiteral("View.Style:showImages");
    const auto own = QStringLiteral("View.QmlStyle:showImages");
    EXPECT_TRUE(asks({{touch, true}, {common, false}, {own, true}}));
    EXPECT_FALSE(asks({{touch, true}, {common, true}, {own, false}}));
    EXPECT_TRUE(asks({{touch, true}, {common, true}, {own, "no"}})) << "no switch";
    EXPECT_TRUE(asks({{touch, false}, {common, true}, {own, false}}));
}

TEST(Pictures, One_whose_request_did_not_arrive_is_asked_for_with_the_next_change)
{
    Pictures pictures;
    pictures.giveUp(pictures.requestsFor(receipt({"100"})).constFirst());
    EXPECT_EQ(pictures.requested(), 0);
    EXPECT_EQ(codesOf(pictures.requestsFor(receipt({"100"}))), QStringList{"100"});
    EXPECT_EQ(pictures.requested(), 1);
}

TEST(Pictures, A_receipt_of_another_form_asks_for_nothing)
{
    Pictures pictures;
    for (const char *document :
         {"{}", R"({"positions":1})", R"({"positions":[1,"x",null]})", R"({"positions":[{}]})",
          R"({"positions":[{"code":100}]})", R"({"positions":[{"code":""}]})"})
        EXPECT_TRUE(pictures.requestsFor(json(document)).isEmpty()) << document;
}

TEST(Pictures, What_came_and_what_is_missing_is_counted)
{
    Pictures pictures;
    pictures.receive({{"uri", "data:image/png;base64,"}});
    pictures.receive({{"uri", "data:image/png;base64,"}});
    pictures.receive({{"uri", ""}});
    EXPECT_EQ(pictures.delivered(), 2);
    EXPECT_EQ(pictures.missing(), 1);
}
