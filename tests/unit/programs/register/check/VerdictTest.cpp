// What is told of a message that fared so.

#include <register/check/Verdict.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

struct Row
{
    int result;
    const char *message;
    const char *remedyHas;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.result;
}

class Verdict : public testing::TestWithParam<Row>
{
};

} // namespace

TEST(Verdict, Of_an_accepted_message_tells_its_time)
{
    const auto result = verdictOn({"/qrPayment", "{}", 100, 0, 12.34}, "a code is shown");
    EXPECT_EQ(result.check, "QrPayment");
    EXPECT_EQ(result.what, "a code is shown");
    EXPECT_EQ(result.outcome, CheckResult::Outcome::Passed);
    EXPECT_EQ(result.message, "accepted in 12.3 ms");
    EXPECT_EQ(result.remedy, "");
}

TEST_P(Verdict, Of_a_message_that_failed_tells_what_to_do)
{
    const auto result = verdictOn({"/qrPayment", "{}", 100, GetParam().result, 1}, "x");
    EXPECT_EQ(result.outcome, CheckResult::Outcome::Failed);
    EXPECT_EQ(result.message, GetParam().message);
    EXPECT_TRUE(result.remedy.contains(GetParam().remedyHas)) << result.remedy.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Of, Verdict,
    testing::Values(Row{6, "the display's name cannot be resolved", "an address"},
                    Row{7, "nobody listens there", "Start the display"},
                    Row{28, "no whole answer within 1 s", "draw afterwards"},
                    Row{42, "the connection was closed without an answer", "with a status"},
                    Row{55, "the connection was closed without an answer", "with a status"},
                    Row{18, "the answer ended before its Content-Length", "as is announced"},
                    Row{23, "the answer was longer than 1 MiB", "not used"},
                    Row{52, "the connection was closed without an answer", "with a status"},
                    Row{56, "the connection was closed without an answer", "with a status"},
                    Row{8, "no HTTP answer (libcurl's error 8)", "HTTP/1.1"},
                    Row{302, "answered 302", "/qrPayment itself"},
                    Row{400, "answered 400", "docs/protocol/schemas/QrPayment.json"},
                    Row{415, "answered 415", "application/json"},
                    Row{422, "answered 422", "application/json"},
                    Row{401, "answered 401", "without credentials"},
                    Row{403, "answered 403", "without credentials"},
                    Row{404, "answered 404", "Serve POST /qrPayment"},
                    Row{405, "answered 405", "method POST"},
                    Row{501, "answered 501", "method POST"}, Row{413, "answered 413", "megabytes"},
                    Row{429, "answered 429", "all less urgent ones wait"},
                    Row{500, "answered 500", "all less urgent ones wait"}));
