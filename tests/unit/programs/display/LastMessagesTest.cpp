#include <display/LastMessages.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

class LastMessagesTest : public testing::Test
{
protected:
    void keep(const QString &type, const QJsonObject &body)
    {
        messages.keep({++number, type, body, 1000 + number});
    }

    void keepPicture(const QString &code, const QString &uri)
    {
        keep("ImageData",
             {{"id", QJsonObject{{"type", "GoodsCode"}, {"value", code}}}, {"uri", uri}});
    }

    QList<int> numbers() const
    {
        QList<int> kept;
        for (const auto &message : messages.all())
            kept.append(message.number);
        return kept;
    }

    LastMessages messages;
    int number = 0;
};

} // namespace

TEST_F(LastMessagesTest, Are_the_newest_of_each_type_in_the_order_of_their_arrival)
{
    keep("Configure", {});
    keep("UpdateDocument", {{"number", 1}});
    keep("PaymentDraft", {{"amount", 1}});
    keep("UpdateDocument", {{"number", 1}, {"total", 2}});
    EXPECT_EQ(numbers(), (QList<int>{1, 3, 4}));
    EXPECT_EQ(messages.find("UpdateDocument")->body["total"].toInt(), 2);
    EXPECT_FALSE(messages.find("QrPayment"));
}

TEST_F(LastMessagesTest, Begin_anew_with_the_settings_of_a_register_that_starts)
{
    keep("Configure", {{"a", 1}});
    keep("UpdateDocument", {});
    keepPicture("100", "data:1");
    keep("Configure", {{"a", 2}});
    EXPECT_EQ(numbers(), QList<int>{4});
}

TEST_F(LastMessagesTest, Do_not_hold_what_was_closed_or_hidden)
{
    keep("QrPayment", {{"qrCode", "x"}});
    keep("PriceList", {{"title", "x"}});
    keep("PriceList", {{"scroll", "down"}});
    keep("Content", {{"data", "x"}, {"hide", false}});
    keep("QrPayment", {{"close", true}});
    keep("PriceList", {{"close", true}});
    keep("Content", {{"data", "x"}, {"hide", true}});
    EXPECT_EQ(numbers(), QList<int>{});
}

TEST_F(LastMessagesTest, Do_not_hold_what_was_to_be_paid_once_it_is_paid)
{
    keep("UpdateDocument", {{"number", 7}, {"state", "open"}});
    keep("QrPayment", {{"qrCode", "x"}});
    keep("PaymentDraft", {{"number", 7}});
    keep("UpdateDocument", {{"number", 7}, {"state", "open"}});
    EXPECT_EQ(numbers(), (QList<int>{2, 3, 4}));
    keep("UpdateDocument", {{"number", 7}, {"state", "paid"}});
    EXPECT_EQ(numbers(), QList<int>{5});
}

TEST_F(LastMessagesTest, Do_not_hold_what_was_to_be_paid_for_the_receipt_before)
{
    keep("UpdateDocument", {{"number", 7}, {"state", "paid"}});
    keep("QrPayment", {{"qrCode", "x"}});
    keep("PaymentDraft", {{"number", 7}});
    EXPECT_EQ(numbers(), (QList<int>{1, 2, 3}));
    keep("UpdateDocument", {{"number", 8}, {"state", "open"}});
    EXPECT_EQ(numbers(), QList<int>{4});
}

TEST_F(LastMessagesTest, Hold_the_draft_that_overtook_its_receipt)
{
    keep("UpdateDocument", {{"number", 7}, {"state", "paid"}});
    keep("PaymentDraft", {{"number", 8}});
    keep("UpdateDocument", {{"number", 8}, {"state", "open"}});
    EXPECT_EQ(numbers(), (QList<int>{2, 3}));
}

TEST_F(LastMessagesTest, Hold_every_step_that_a_price_list_was_scrolled_by)
{
    keep("PriceList", {{"title", "old"}});
    keep("PriceList", {{"scroll", "down"}});
    keep("PriceList", {{"title", "new"}});
    keep("PriceList", {{"scroll", "down"}});
    keep("PriceList", {{"scroll", "up"}});
    EXPECT_EQ(numbers(), (QList<int>{3, 4, 5}));
    EXPECT_EQ(messages.find("PriceList")->body["title"].toString(), "new");
}

TEST_F(LastMessagesTest, Hold_no_scrolling_without_a_price_list_and_no_endless_scrolling)
{
    keep("PriceList", {{"scroll", "down"}});
    EXPECT_EQ(numbers(), QList<int>{});
    keep("PriceList", {{"title", "long"}});
    for (int i = 0; i < 1000; ++i)
        keep("PriceList", {{"scroll", "down"}});
    EXPECT_EQ(messages.all().size(), 201);
    EXPECT_EQ(messages.find("PriceList")->body["title"].toString(), "long");
    EXPECT_EQ(messages.all().last().number, number);
}

TEST_F(LastMessagesTest, Hold_the_newest_picture_of_each_goods)
{
    keepPicture("100", "data:1");
    keepPicture("101", "data:2");
    keepPicture("100", "data:3");
    EXPECT_EQ(numbers(), (QList<int>{2, 3}));
}

TEST_F(LastMessagesTest, Forget_the_oldest_pictures_beyond_their_limit)
{
    keep("UpdateDocument", {{"number", 1}});
    const QString third(LastMessages::maxPictureBytes / 3, 'x');
    for (const auto *code : {"1", "2", "3", "4"})
        keepPicture(code, third);
    EXPECT_EQ(numbers(), (QList<int>{1, 4, 5}));
}

TEST_F(LastMessagesTest, Go_to_JSON_and_back)
{
    keep("Content", {{"data", "Привет"}});
    const auto json = messages.toJson();
    EXPECT_EQ(json.first().toObject(), (QJsonObject{{"n", 1},
                                                    {"type", "Content"},
                                                    {"at", 1001},
                                                    {"body", QJsonObject{{"data", "Привет"}}}}));
    EXPECT_EQ(KeptMessage::fromJson(json.first().toObject()).toJson(), json.first().toObject());
}

TEST_F(LastMessagesTest, Forget_the_oldest_pictures_beyond_their_number)
{
    for (int i = 0; i < LastMessages::maxPictures + 2; ++i)
        keepPicture(QString::number(i), "data:1");
    EXPECT_EQ(messages.all().size(), LastMessages::maxPictures);
    EXPECT_EQ(numbers().first(), 3);
}

TEST_F(LastMessagesTest, Hold_of_a_picture_and_of_a_step_nothing_but_what_the_screen_needs)
{
    const QString large(1'000'000, 'x');
    keep("ImageData",
         {{"id", QJsonObject{{"type", "GoodsCode"}, {"value", "100"}, {"more", large}}},
          {"uri", "data:1"},
          {"more", large}});
    keep("PriceList", {{"title", "x"}});
    keep("PriceList", {{"scroll", "down"}, {"more", large}});
    EXPECT_EQ(messages.find("ImageData")->body,
              (QJsonObject{{"id", QJsonObject{{"type", "GoodsCode"}, {"value", "100"}}},
                           {"uri", "data:1"}}));
    EXPECT_EQ(messages.all().last().body, (QJsonObject{{"scroll", "down"}}));
}
