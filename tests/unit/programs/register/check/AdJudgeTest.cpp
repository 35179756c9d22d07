#include <register/check/AdJudge.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

using Outcome = CheckResult::Outcome;

class AdJudgeTest : public testing::Test
{
protected:
    /// Posts an advertisement, which is answered after 10 ms.
    void post(const QByteArray &url, double atMs, int result = 0)
    {
        judge.takePost({"/showAD", "{\"url\":\"http://x/" + url + "\"}", atMs, result, 10});
    }

    void expectFailed(const QString &message)
    {
        const auto result = judge.result("http://127.0.0.1:5");
        EXPECT_EQ(result.check, "adResult");
        EXPECT_EQ(result.outcome, Outcome::Failed);
        EXPECT_EQ(result.message, message);
        EXPECT_FALSE(result.remedy.isEmpty());
    }

    AdJudge judge;
};

} // namespace

TEST_F(AdJudgeTest, Passes_one_result_for_each_in_time)
{
    post("there.png", 0);
    judge.takeReport(true, 1010);
    post("missing.png", 1100);
    judge.takeReport(false, 1111);
    post("there.png", 1200); // is being shown
    const auto result = judge.result("http://127.0.0.1:5");
    EXPECT_EQ(result.outcome, Outcome::Passed) << result.message.toStdString();
    EXPECT_EQ(result.message, "2 of 3 reported");
    EXPECT_EQ(result.remedy, "");
}

TEST_F(AdJudgeTest, Fails_a_result_before_the_answer)
{
    post("missing.png", 100);
    judge.takeReport(false, 101);
    expectFailed("a result came before /showAD was answered");
}

TEST_F(AdJudgeTest, Forgives_a_result_that_overtakes_the_answer_on_this_machine)
{
    post("missing.png", 100);
    judge.takeReport(false, 106);
    post("there.png", 200);
    judge.takeReport(true, 1210);
    EXPECT_EQ(judge.result("x").outcome, Outcome::Passed);
}

TEST_F(AdJudgeTest, Fails_what_cannot_be_had_and_is_said_to_have_been_shown)
{
    post("missing.png", 0);
    judge.takeReport(true, 1010);
    expectFailed("an advertisement that cannot be had was reported as shown");
}

TEST_F(AdJudgeTest, Fails_what_is_there_and_is_said_to_have_failed)
{
    post("there.png", 0);
    judge.takeReport(false, 20);
    expectFailed("an advertisement that is there, a PNG, was reported as failed");
}

TEST_F(AdJudgeTest, Fails_a_result_long_before_the_time_is_over)
{
    post("there.png", 0);
    judge.takeReport(true, 60);
    expectFailed("an advertisement for 1 s was reported as shown after 50 ms");
}

TEST_F(AdJudgeTest, Fails_more_results_than_advertisements)
{
    post("there.png", 0);
    judge.takeReport(true, 1010);
    judge.takeReport(true, 1011);
    expectFailed("2 results came for 1 advertisements");
}

TEST_F(AdJudgeTest, Fails_a_display_that_reports_too_few)
{
    expectFailed("0 of the 2 advertisements were reported");
    post("there.png", 0);
    judge.takeReport(true, 1010);
    post("missing.png", 1100);
    expectFailed("1 of the 2 advertisements were reported");
    EXPECT_TRUE(judge.result("http://127.0.0.1:5").remedy.contains("http://127.0.0.1:5"));
}

TEST_F(AdJudgeTest, Counts_no_advertisement_that_was_refused)
{
    post("there.png", 0, 404);
    EXPECT_EQ(judge.posts(), 0);
}

TEST_F(AdJudgeTest, Tells_when_advertisements_come_too_fast_for_other_messages)
{
    for (int number = 0; number < 10; ++number) {
        post("there.png", 20 * number);
        judge.takeReport(true, 20 * number + 11);
    }
    EXPECT_FALSE(judge.runsAway()) << "they may be few";
    post("there.png", 200);
    EXPECT_TRUE(judge.runsAway());
}
