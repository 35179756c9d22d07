#include <contract/Contract.h>

#include <common/MessageTypes.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <tuple>

namespace {

const Contract &contract()
{
    static const Contract contract;
    return contract;
}

QStringList problems(const QString &name, const QByteArray &body)
{
    return contract().problemsOf(name, support::json(body));
}

/// A message that breaks the contract, and where.
using Broken = std::tuple<const char *, const char *, const char *>;

class OfBrokenMessages : public testing::TestWithParam<Broken>
{
};

} // namespace

TEST(Contract, Is_there_for_every_message_and_request)
{
    const auto names = contract().names();
    for (const auto &type : messageTypes)
        EXPECT_TRUE(names.contains(QString::fromLatin1(type.name))) << type.name;
    for (const auto *request : {"getImage", "adResult", "AdSubscription", "AdStream"})
        EXPECT_TRUE(names.contains(QString::fromLatin1(request))) << request;
}

TEST(Contract, Says_that_there_is_none)
{
    EXPECT_EQ(problems("Nothing", "{}"), QStringList{"there is no contract for \"Nothing\""});
}

TEST(Contract, Gives_its_schemas_as_they_stand)
{
    EXPECT_EQ(contract().schema("QrPayment")["title"].toString(), "QrPayment");
    EXPECT_EQ(contract().schema("Nothing"), QJsonObject());
}

TEST(Contract, Is_open_where_the_register_decides)
{
    EXPECT_EQ(problems("UpdateDocument", R"({"anything":[1,{"a":null}]})"), QStringList());
    EXPECT_EQ(problems("UpdateDocument", "{}"), QStringList());
    EXPECT_EQ(problems("PaymentDraft", R"({"anything":1})"), QStringList());
    EXPECT_EQ(problems("PriceList", R"({"title":"","data":"text","columns":0})"), QStringList());
    EXPECT_EQ(problems("PriceList", R"({"title":"","data":null,"columns":-1})"), QStringList());
    EXPECT_EQ(problems("Content", R"({"data":{"a":1},"type":"","hide":true})"), QStringList());
    EXPECT_EQ(problems("ImageData", R"({"id":{"sku":7},"uri":"http://a.example/7.png"})"),
              QStringList());
    EXPECT_EQ(problems("getImage", R"({"type":"request","name":"getImage",
                                       "data":{"Sku":{"text":"7","shop":1}}})"),
              QStringList());
}

TEST(Contract, Takes_a_result_by_its_name_unless_it_is_marked_as_a_request)
{
    EXPECT_EQ(problems("adResult", R"({"name":"adResult","value":true})"), QStringList());
    EXPECT_EQ(problems("adResult", R"({"type":1,"name":"adResult","value":true})"), QStringList());
}

TEST(Contract, Takes_every_receipt_that_the_commands_of_the_sample_register_make)
{
    EXPECT_EQ(problems("SampleReceipt", R"({"number":-3,"state":"open","positions":[],"sum":0,
        "discountSum":0,"total":0,"payments":[{"kind":"voucher","amount":0}],"change":0,
        "loyalty":{"points":5}})"),
              QStringList());
}

TEST(Contract, Tells_each_problem_once)
{
    EXPECT_EQ(problems("Content", R"({"data":1,"type":2,"hide":true})").size(), 1);
    EXPECT_EQ(problems("Content", R"({"data":1,"type":2,"hide":3})").size(), 2);
    EXPECT_EQ(problems("UpdateDocument", R"({"addingAllowed":true})").size(), 1);
}

TEST_P(OfBrokenMessages, Contract_tells_the_place)
{
    const auto &[name, body, place] = GetParam();
    ASSERT_FALSE(support::json(body).isEmpty()) << body;
    const auto found = problems(name, body);
    EXPECT_FALSE(found.isEmpty());
    EXPECT_TRUE(std::any_of(found.begin(), found.end(), [place = place](const QString &problem) {
        return problem.startsWith(QString::fromLatin1(place) + QStringLiteral(": "));
    })) << found.join('\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Rows, OfBrokenMessages,
    testing::Values(
        Broken{"Configure", R"({"View.Interface:touchng":false})", "/"},
        Broken{"UpdateDocument", R"({"addingAllowed":true})", "/"},
        Broken{"QrPayment", R"({"qrCode":"x","amount":1})", "/"},
        Broken{"QrPayment", R"({"qrCode":"x","amount":"1","timeout":1})", "/amount"},
        Broken{"QrPayment", R"({"qrCode":"x","amount":1.5,"timeout":1})", "/amount"},
        Broken{"QrPayment", R"({"qrCode":"x","amount":1,"timeout":1,"more":1})", "/"},
        Broken{"QrPayment", R"({"close":false})", "/close"},
        Broken{"ShowAd", R"({"index":1,"url":"http://a","time":1})", "/"},
        Broken{"ShowAd", R"({"id":"a","index":1,"url":"http://a","time":0})", "/time"},
        Broken{"ShowAd", R"({"index":0,"url":"ads://a","time":60})", "/time"},
        Broken{"ShowAd", R"({"id":"a","index":1,"url":1,"time":1})", "/url"},
        Broken{"PriceList", R"({"title":"x","data":[]})", "/"},
        Broken{"PriceList", R"({"scroll":1})", "/scroll"},
        Broken{"ImageData", R"({"id":"1","uri":""})", "/id"},
        Broken{"ImageData", R"({"id":{},"uri":null})", "/uri"},
        Broken{"SampleImageId", R"({"type":"Name","value":"1"})", "/type"},
        Broken{"SampleImageId", R"({"type":"Barcode","value":1})", "/value"},
        Broken{"Content", R"({"data":1,"type":"text","hide":0})", "/hide"},
        Broken{"Content", R"({"type":"text","hide":true})", "/"},
        Broken{"getImage", R"({"type":"request","name":"getImage","data":{}})", "/data"},
        Broken{"getImage", R"({"type":"request","name":"getImage","data":{"GoodsCode":"1"}})",
               "/data/GoodsCode"},
        Broken{"getImage", R"({"type":"result","name":"getImage","data":{}})", "/type"},
        Broken{"adResult", R"({"type":"request","name":"adResult","value":true})", "/type"},
        Broken{"adResult", R"({"type":"result","name":"adResult","value":1})", "/value"},
        Broken{"adResult", R"({"type":"result","name":"adResult"})", "/"},
        Broken{"AdSubscription", R"({"pk":"short"})", "/pk"},
        Broken{"AdStream", R"({"stream":"1"})", "/stream"},
        Broken{"SampleReceipt", R"({"number":1})", "/"}));
