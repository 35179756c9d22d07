#include <register/check/RequestJudge.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

using Outcome = CheckResult::Outcome;

const QByteArray pictureRequest = R"({"type":"request","name":"getImage","data":{"GoodsCode":
    {"type":"GoodsCode","value":"100"},"Barcode":{"type":"Barcode","value":"46"}}})";
const QByteArray result = R"({"type":"result","name":"adResult","value":true})";
const QByteArray failure = R"({"type":"result","name":"adResult","value":false})";

} // namespace

TEST(RequestJudge, Passes_what_keeps_to_the_contract)
{
    RequestJudge judge;
    judge.take(pictureRequest, 1);
    for (const auto *url : {"there.png", "missing.png"})
        judge.takeAdvertisement({"/showAD", url, 10, 0, 1});
    judge.take(result, 1011);
    EXPECT_FALSE(judge.hasAllReports());
    judge.take(failure, 1012);
    EXPECT_TRUE(judge.hasAllReports());
    const auto results = judge.results(38081);
    ASSERT_EQ(results.size(), 2);
    EXPECT_EQ(results[0].check, "getImage");
    EXPECT_EQ(results[0].outcome, Outcome::Passed);
    EXPECT_EQ(results[0].message, "1 came");
    EXPECT_EQ(results[1].check, "adResult");
    EXPECT_EQ(results[1].outcome, Outcome::Passed) << results[1].message.toStdString();
}

TEST(RequestJudge, Leaves_it_to_the_display_whether_it_asks_for_pictures)
{
    const auto results = RequestJudge().results(5);
    ASSERT_EQ(results.size(), 2);
    EXPECT_EQ(results[0].outcome, Outcome::Skipped);
    EXPECT_TRUE(results[0].remedy.contains("http://127.0.0.1:5"));
    EXPECT_EQ(results[1].outcome, Outcome::Failed);
}

TEST(RequestJudge, Fails_requests_that_break_the_contract)
{
    RequestJudge judge;
    judge.take(R"({"type":"result","name":"adResult","value":"yes"})", 1);
    judge.take(R"({"type":"request","name":"getImage","data":5})", 1);
    const auto results = judge.results(5);
    EXPECT_EQ(results[0].outcome, Outcome::Failed);
    EXPECT_TRUE(results[0].message.contains("/data")) << results[0].message.toStdString();
    EXPECT_TRUE(results[0].remedy.contains("getImage.json"));
    EXPECT_EQ(results[1].outcome, Outcome::Failed);
    EXPECT_TRUE(results[1].message.contains("/value")) << results[1].message.toStdString();
    EXPECT_TRUE(results[1].remedy.contains("adResult.json"));
}

TEST(RequestJudge, Fails_requests_that_nobody_knows)
{
    RequestJudge judge;
    judge.take(R"({"name":"getPrice"})", 1);
    judge.take("no JSON", 1);
    const auto results = judge.results(5);
    ASSERT_EQ(results.size(), 3);
    EXPECT_EQ(results[2].check, "request");
    EXPECT_EQ(results[2].outcome, Outcome::Failed);
    EXPECT_TRUE(results[2].message.startsWith("2 came")) << results[2].message.toStdString();
    EXPECT_TRUE(results[2].message.contains("getPrice"));
    EXPECT_TRUE(results[2].message.contains("no JSON"));
}
