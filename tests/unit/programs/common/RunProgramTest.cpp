#include <common/RunProgram.h>

#include <common/ExitCode.h>
#include <common/UsageError.h>

#include <support/OutputCapture.h>

#include <ConfigError.h>
#include <PluginLoader.h>

#include <gtest/gtest.h>

namespace {

template <class Error>
void expectRefusal()
{
    const auto printed = support::outputOf(stderr, [] {
        EXPECT_EQ(runProgram("till", []() -> int { throw Error(QStringLiteral("say what")); }),
                  Unusable);
    });
    EXPECT_EQ(printed, "till: say what\n");
}

} // namespace

TEST(RunProgram, Gives_the_exit_code_of_what_it_runs)
{
    EXPECT_EQ(runProgram("till", [] { return 0; }), 0);
    EXPECT_EQ(runProgram("till", [] { return 1; }), 1);
}

TEST(RunProgram, Tells_what_cannot_be_used_in_a_line_with_the_programs_name)
{
    expectRefusal<UsageError>();
    expectRefusal<ConfigError>();
    expectRefusal<PluginError>();
}

TEST(RunProgram, Hides_no_other_error)
{
    EXPECT_THROW(runProgram("till", []() -> int { throw std::logic_error("a bug"); }),
                 std::logic_error);
}
