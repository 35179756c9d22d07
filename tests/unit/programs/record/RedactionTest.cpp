#include "StableRedaction.h"

#include <contract/Contract.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

class RedactionTest : public testing::Test
{
protected:
    static QJsonObject body(const QByteArray &json)
    {
        const auto given = support::json(json);
        EXPECT_FALSE(given.isEmpty()) << json.toStdString();
        const auto once = Redaction::value(given);
        EXPECT_EQ(Redaction::value(once), once) << json.toStdString();
        return once.toObject();
    }
};

} // namespace

TEST_F(RedactionTest, Masks_the_text_of_a_payment_code_and_keeps_its_length)
{
    EXPECT_EQ(body(R"({"qrCode":"https://p.example/r/7","amount":12331,"timeout":90})"),
              support::json(R"({"qrCode":"xxxxxxxxxxxxxxxxxxxxx","amount":12331,"timeout":90})"));
}

TEST_F(RedactionTest, Knows_payment_codes_by_any_name_that_says_so)
{
    EXPECT_EQ(body(R"({"QRText":"a b","sbp_qr":["c"],"showQr":true})"),
              support::json(R"({"QRText":"xxx","sbp_qr":["x"],"showQr":true})"));
}

TEST_F(RedactionTest, Masks_all_that_stands_under_a_personal_name)
{
    EXPECT_EQ(body(R"({"buyer":"Иван П."})"), support::json(R"({"buyer":"xxxx x."})"));
    const auto redacted = body(R"({"client":{"age":42,"isNew":true,"none":null,"tags":["a-b",7],
        "79001234567":{"deep":"text"}},"cardNumber":"12-34","customer_inn":77070,"bonusSum":500})");
    EXPECT_EQ(redacted, support::json(R"({"client":{"age":0,"isNew":true,"none":null,
        "tags":["x-x",0],"xxxxxxxxxxx":{"deep":"xxxx"}},"cardNumber":"xx-xx","customer_inn":0,
        "bonusSum":0})"));
    const auto client =
        body(R"({"client":{"photo":"data:image/png;base64,AAAA"}})")["client"].toObject();
    EXPECT_EQ(client["photo"].toString(), redactedText("data:,"));
}

TEST_F(RedactionTest, Masks_long_numbers_that_are_no_amounts_or_times)
{
    EXPECT_EQ(body(R"({"fiscalSign":1234567890,"number":99999999,"total":1000000000,
                      "time":2147483647,"rows":[4111111111111111],"disc_perc":33.3333333333})"),
              support::json(R"({"fiscalSign":0,"number":99999999,"total":1000000000,
                               "time":2147483647,"rows":[0],"disc_perc":33.3333333333})"));
}

TEST_F(RedactionTest, Redacts_JSON_within_texts)
{
    EXPECT_EQ(
        body(R"({"data":"{\"total\":5, \"client\":\"Ivan\", \"list\":[\"{\\\"pin\\\":1}\"]}"})"),
        support::json(
            R"({"data":"{\"client\":\"xxxx\",\"list\":[\"{\\\"pin\\\":0}\"],\"total\":5}"})"));
    EXPECT_EQ(body(R"({"data":"[1,\"ivan@mail\"]"})"),
              support::json(R"({"data":"[1,\"xxxx@xxxx\"]"})"));
}

TEST_F(RedactionTest, Masks_JSON_that_is_nested_in_texts_too_deep)
{
    QJsonValue value("Ivan");
    for (int i = 0; i < 8; ++i)
        value = QString(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact));
    EXPECT_FALSE(Redaction::value(QJsonArray{value}).toArray()[0].toString().contains("Ivan"));
}

TEST_F(RedactionTest, Masks_payment_codes_of_any_shape)
{
    EXPECT_EQ(
        body(R"({"qr":{"payload":"a b","list":[{"text":"c"}],"pin":7,"amount":12331}})"),
        support::json(R"({"qr":{"payload":"xxx","list":[{"text":"x"}],"pin":0,"amount":12331}})"));
    EXPECT_EQ(body(R"({"payUrl":"ab","payment_link":"ab","deeplink":"ab","sbpId":"ab"})"),
              support::json(R"({"payUrl":"xx","payment_link":"xx","deeplink":"xx","sbpId":"xx"})"));
}

TEST_F(RedactionTest, Masks_amounts_and_times_that_are_none)
{
    EXPECT_EQ(body(R"({"total":79001234567,"sum":1000000001,"time":2147483648})"),
              support::json(R"({"total":0,"sum":0,"time":0})"));
}

TEST_F(RedactionTest, Leaves_what_a_display_shows_of_a_receipt)
{
    const auto *const receipt =
        R"({"number":7,"state":"open","positions":[{"code":"100","unit":"шт",
        "name":"Хлеб бородинский, 400 г","price":6490,"quantity":2,"disc_perc":5,"disc_sum":649,
        "sum":12980,"total":12331}],"payments":[{"kind":"card","amount":12331}],"change":0})";
    EXPECT_EQ(body(receipt), support::json(receipt));
}

TEST_F(RedactionTest, Judges_texts_at_any_depth_and_names_of_properties)
{
    EXPECT_EQ(body(R"({"data":[[{"a@b.example":"http://h.example/?k=1"}]]})"),
              support::json(R"({"data":[[{"x@x.xxxxxxx":"http://h.example/?k=x"}]]})"));
}

TEST_F(RedactionTest, Keeps_every_example_of_the_contract_within_the_contract)
{
    const Contract contract;
    const auto files = QDir(EXAMPLES).entryInfoList({"*.json"});
    ASSERT_GT(files.size(), 15);
    for (const auto &info : files) {
        const auto schema = info.baseName().section('-', 0, 0);
        if (schema.startsWith("Ad"))
            continue; // of the ad service, which is not recorded
        QFile file(info.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const auto example = support::json(file.readAll());
        EXPECT_EQ(contract.problemsOf(schema, Redaction::value(example).toObject()), QStringList())
            << info.fileName().toStdString();
    }
}
