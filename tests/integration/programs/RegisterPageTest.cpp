#include "ProgramFixture.h"

#include <support/RawClient.h>
#include <support/ScriptedServer.h>

#include <csignal>

namespace {

using support::RawClient;

class RegisterPage : public ProgramFixture
{
protected:
    /// Starts a register with a page at a port of the system's choice, and waits for its address.
    void start(const QStringList &options = {})
    {
        process = startRegister(QStringList{"--config", config(), "--page", "0"} + options);
        ASSERT_TRUE(process->waitForErrors("Cashier's page at "))
            << process->errors().toStdString();
        const QRegularExpression line(
            " INFO register Cashier's page at http://127.0.0.1:(\\d+)/\n");
        port = line.match(QString(process->errors())).captured(1).toInt();
        ASSERT_NE(port, 0) << process->errors().toStdString();
    }

    RawClient::Answer post(const QByteArray &command) const
    {
        RawClient client(port);
        client.send(RawClient::request("/commands", command));
        return client.answer();
    }

    ProcessPtr process;
    int port = 0;
};

} // namespace

TEST_F(RegisterPage, Runs_commands_until_it_is_told_to_quit)
{
    start();
    EXPECT_EQ(post(R"({"do":"open"})").body, "{\"n\":1,\"do\":\"open\",\"ok\":true}\n");
    EXPECT_TRUE(process->isRunning());
    post(R"({"do":"quit"})");
    EXPECT_EQ(process->exitCode(), 0);
    EXPECT_EQ(process->outputLines().size(), 2);
}

TEST_F(RegisterPage, Has_failed_if_any_of_its_commands_has)
{
    start();
    EXPECT_EQ(post(R"({"do":"pay","kind":5})").status, 200);
    post(R"({"do":"quit"})");
    EXPECT_EQ(process->exitCode(), 1);
}

TEST_F(RegisterPage, Ends_with_the_script_that_was_given_with_it)
{
    start({"--commands", write("commands.jsonl", "{\"do\":\"open\"}\n")});
    EXPECT_EQ(process->exitCode(), 0);
}

TEST_F(RegisterPage, Ends_in_order_by_a_signal)
{
    start();
    process->signal(SIGTERM);
    EXPECT_EQ(process->exitCode(), 0);
}

TEST_F(RegisterPage, May_stay_after_the_script_and_numbers_its_commands_with_those)
{
    start({"--stay", "--commands", write("commands.jsonl", "{\"do\":\"open\"}\n")});
    ASSERT_TRUE(process->waitForOutputLines(1));
    support::letPass(std::chrono::milliseconds(100));
    EXPECT_TRUE(process->isRunning());
    EXPECT_EQ(post(R"({"do":"sell","goods":"100"})").body,
              "{\"n\":2,\"do\":\"sell\",\"ok\":true}\n");
    ASSERT_TRUE(process->waitForOutputLines(2));
}

TEST_F(RegisterPage, Is_not_needed_to_tell_an_inspector_what_was_asked_for)
{
    const support::ScriptedServer inspector;
    process =
        startRegister({"--config", config(), "--stay", "--inspector", inspector.url().toString(),
                       "--commands", write("commands.jsonl", "{\"do\":\"open\"}\n")});
    ASSERT_TRUE(support::waitFor([&] { return inspector.requestCount() == 2; }));
    const auto requests = inspector.requests();
    EXPECT_EQ(requests[0].path, "/asked");
    EXPECT_EQ(support::json(requests[0].body)["type"].toString(), "Configure");
    EXPECT_EQ(support::json(requests[1].body)["type"].toString(), "UpdateDocument");
}
