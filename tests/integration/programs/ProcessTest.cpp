#include "Process.h"

#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <csignal>

TEST(Process, Gives_what_the_program_prints_and_its_exit_code)
{
    Process process("sh", {"-c", "echo one; echo two; printf three; echo wrong >&2; exit 5"});
    EXPECT_EQ(process.exitCode(), 5);
    EXPECT_EQ(process.output(), "one\ntwo\nthree");
    EXPECT_EQ(process.outputLines(), (QByteArrayList{"one", "two"}));
    EXPECT_EQ(process.errors(), "wrong\n");
}

TEST(Process, Has_hardly_any_environment)
{
    qunsetenv("LSAN_OPTIONS");
    qputenv("DISPLAY", ":0");
    qputenv("QT_LOGGING_RULES", "*=true");
    Process process("env", {});
    EXPECT_EQ(process.exitCode(), 0);
    auto lines = process.outputLines();
    std::sort(lines.begin(), lines.end());
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].startsWith("HOME="));
    EXPECT_EQ(lines[1], "LC_ALL=C.UTF-8");
    EXPECT_TRUE(lines[2].startsWith("PATH="));
}

TEST(Process, Has_an_input_that_stays_open_until_it_is_closed)
{
    Process process("cat", {});
    process.write("a\n");
    EXPECT_TRUE(process.waitForOutputLines(1));
    EXPECT_TRUE(process.isRunning());
    process.closeInput();
    EXPECT_EQ(process.exitCode(), 0);
}

TEST(Process, Tells_that_it_was_killed)
{
    Process process("cat", {});
    process.signal(SIGKILL);
    EXPECT_EQ(process.exitCode(), -1);
    EXPECT_TRUE(process.wasKilled());
}
