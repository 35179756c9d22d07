#include <register/check/RequestJudge.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

using Outcome = CheckResult::Outcome;

const QByteArray pictureRequest = R"({"type":"request","name":"getImage","data":{"GoodsCode":
    {"type":"GoodsCode","value":"100"},"Barcode":{"type":"Barcode","value":"46"}}})";
const QByteArray result = R"({"type":"result","name":"adResult","value":true})";

} // namespace

TEST(RequestJudge, Passes_what_keeps_to_the_contract)
{
    RequestJudge judge;
    judge.take(pictureRequest);
    judge.take(result);
    judge.take(result);
    const auto results = judge.results(38081);
    ASSERT_EQ(results.size(), 2);
    EXPECT_EQ(results[0].check, "getImage");
    EXPECT_EQ(results[0].outcome, Outcome::Passed);
    EXPECT_EQ(results[0].message, "1 came");
    EXPECT_EQ(results[1].check, "adResult");
    EXPECT_EQ(results[1].outcome, Outcome::Passed);
    EXPECT_EQ(results[1].message, "2 came");
    EXPECT_EQ(judge.count("adResult"), 2);
}

TEST(RequestJudge, Fails_a_display_that_reports_no_advertisement_and_leaves_pictures_to_it)
{
    const auto results = RequestJudge().results(5);
    ASSERT_EQ(results.size(), 2);
    EXPECT_EQ(results[0].outcome, Outcome::Skipped);
    EXPECT_TRUE(results[0].remedy.contains("http://127.0.0.1:5"));
    EXPECT_EQ(results[1].outcome, Outcome::Failed);
    EXPECT_TRUE(results[1].remedy.contains("http://127.0.0.1:5"));
}

TEST(RequestJudge, Fails_requests_that_break_the_contract)
{
    RequestJudge judge;
    judge.take(R"({"type":"result","name":"adResult","value":"yes"})");
    const auto results = judge.results(5);
    EXPECT_EQ(results[1].outcome, Outcome::Failed);
    EXPECT_TRUE(results[1].message.contains("/value")) << results[1].message.toStdString();
    EXPECT_TRUE(results[1].remedy.contains("adResult.json"));
}

TEST(RequestJudge, Fails_requests_that_nobody_knows)
{
    RequestJudge judge;
    judge.take(R"({"name":"getPrice"})");
    judge.take("no JSON");
    const auto results = judge.results(5);
    ASSERT_EQ(results.size(), 3);
    EXPECT_EQ(results[2].check, "request");
    EXPECT_EQ(results[2].outcome, Outcome::Failed);
    EXPECT_TRUE(results[2].message.startsWith("2 came")) << results[2].message.toStdString();
    EXPECT_TRUE(results[2].message.contains("getPrice"));
    EXPECT_TRUE(results[2].message.contains("no JSON"));
}
