#include <register/check/CheckResult.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

using Outcome = CheckResult::Outcome;

const CheckResult passed{"Content", "a text", Outcome::Passed, "accepted in 1.0 ms", {}};
const CheckResult failed{"QrPayment", "a code", Outcome::Failed, "answered 404", "Serve it."};
const CheckResult skipped{"getImage", "pictures", Outcome::Skipped, "none", "Ask."};

} // namespace

TEST(CheckResult, Is_told_in_a_line_and_what_to_do_in_another)
{
    EXPECT_EQ(toText(passed), "passed  Content        a text: accepted in 1.0 ms");
    EXPECT_EQ(toText(failed), "failed  QrPayment      a code: answered 404\n        -> Serve it.");
}

TEST(CheckResult, Sums_up)
{
    EXPECT_EQ(summaryOf({passed, passed, failed, skipped}), "2 passed, 1 failed, 1 skipped");
}

TEST(CheckResult, Is_written_as_JSON)
{
    EXPECT_EQ(toJson({passed, failed, skipped}, "http://d"), support::json(R"({
        "display":"http://d","passed":1,"failed":1,"skipped":1,"checks":[
        {"check":"Content","what":"a text","outcome":"passed","message":"accepted in 1.0 ms"},
        {"check":"QrPayment","what":"a code","outcome":"failed","message":"answered 404",
         "remedy":"Serve it."},
        {"check":"getImage","what":"pictures","outcome":"skipped","message":"none",
         "remedy":"Ask."}]})"));
}

TEST(CheckResult, Passes_only_if_something_passed_and_nothing_failed)
{
    EXPECT_TRUE(havePassed({passed, skipped}));
    EXPECT_FALSE(havePassed({passed, failed}));
    EXPECT_FALSE(havePassed({skipped}));
    EXPECT_FALSE(havePassed({}));
}
