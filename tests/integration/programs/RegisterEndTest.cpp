#include "ProgramFixture.h"

#include <csignal>

namespace {

class RegisterEnd : public ProgramFixture
{
protected:
    QString commands(const QByteArray &script) const { return write("commands.jsonl", script); }
};

class RegisterEndBySignal : public RegisterEnd, public testing::WithParamInterface<int>
{
};

} // namespace

TEST_P(RegisterEndBySignal, Is_in_order_when_it_stays_after_its_commands)
{
    const auto process =
        startRegister({"--config", config(), "--stay", "--report", path("report.json"),
                       "--commands", commands("{\"do\":\"open\"}\n")});
    ASSERT_TRUE(process->waitForOutputLines(1));
    support::letPass(std::chrono::milliseconds(100));
    EXPECT_TRUE(process->isRunning());
    process->signal(GetParam());
    EXPECT_EQ(process->exitCode(), 0) << process->errors().toStdString();
    EXPECT_EQ(support::json(read("report.json"))["document"].toObject()["number"].toInt(), 1);
}

TEST_P(RegisterEndBySignal, Is_in_order_when_there_are_no_commands)
{
    const auto process = startRegister({"--config", config(), "--stay"});
    ASSERT_TRUE(process->waitForErrors("viewconnector")); // the plug-in has started
    support::letPass(std::chrono::milliseconds(100));
    process->signal(GetParam());
    EXPECT_EQ(process->exitCode(), 0) << process->errors().toStdString();
}

TEST_P(RegisterEndBySignal, Is_in_order_in_the_middle_of_a_wait)
{
    const auto process =
        startRegister({"--config", config(), "--commands",
                       commands("{\"do\":\"wait\",\"ms\":60000}\n{\"do\":\"open\"}\n")});
    ASSERT_TRUE(process->waitForOutputLines(1));
    process->signal(GetParam());
    EXPECT_EQ(process->exitCode(), 0);
    EXPECT_EQ(process->outputLines().size(), 1);
}

TEST_P(RegisterEndBySignal, Keeps_the_failure_of_a_command)
{
    const auto process = startRegister(
        {"--config", config(), "--stay", "--commands", commands("{\"do\":\"pay\"}\n")});
    ASSERT_TRUE(process->waitForOutputLines(1));
    process->signal(GetParam());
    EXPECT_EQ(process->exitCode(), 1);
}

INSTANTIATE_TEST_SUITE_P(Signals, RegisterEndBySignal, testing::Values(SIGTERM, SIGINT),
                         [](const auto &signal) {
                             return signal.param == SIGINT ? "SIGINT" : "SIGTERM";
                         });

TEST_F(RegisterEnd, Comes_by_quit_even_if_it_was_to_stay)
{
    const auto process =
        startRegister({"--config", config(), "--stay", "--commands",
                       commands("{\"do\":\"open\"}\n{\"do\":\"quit\"}\n{\"do\":\"open\"}\n")});
    EXPECT_EQ(process->exitCode(), 0);
    EXPECT_EQ(process->outputLines().size(), 2);
}

TEST_F(RegisterEnd, Comes_by_quit_while_standard_input_stays_open)
{
    const auto process = startRegister({"--config", config(), "--commands", "-"});
    process->write("{\"do\":\"quit\"}\n");
    EXPECT_EQ(process->exitCode(), 0);
}

TEST_F(RegisterEnd, Comes_at_once_without_commands)
{
    const auto process = startRegister({"--config", config()});
    EXPECT_EQ(process->exitCode(), 0);
    EXPECT_EQ(process->output(), "");
}

TEST_F(RegisterEnd, Leaves_a_report_of_the_receipt_and_of_what_was_asked_for)
{
    const auto process =
        startRegister({"--config", config(), "--report", path("report.json"), "--commands",
                       commands("{\"do\":\"open\"}\n{\"do\":\"sell\",\"goods\":\"100\"}\n")});
    EXPECT_EQ(process->exitCode(), 0);
    const auto report = support::json(read("report.json"));
    EXPECT_EQ(report["document"].toObject()["total"].toInt(), 1000);
    EXPECT_EQ(report["asked"].toObject().keys(), (QStringList{"Configure", "UpdateDocument"}));
}
