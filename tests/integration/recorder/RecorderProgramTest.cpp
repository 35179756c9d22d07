#include "RecordedShop.h"

#include <support/RawClient.h>
#include <support/ScriptedServer.h>

namespace {

class RecorderProgram : public RecordedShop
{
protected:
    RecorderProgram() { displayPort = display.port(); }

    int post(const QByteArray &body) const
    {
        support::RawClient client(messagePort);
        client.send(support::RawClient::request("/content", body));
        return client.answer().status;
    }

    support::ScriptedServer display;
};

} // namespace

TEST_F(RecorderProgram, Says_which_settings_to_change_and_what_has_passed)
{
    const auto recorder = startRecorder({});
    EXPECT_EQ(post("{}"), 200);
    stop(*recorder);
    const auto errors = QString(recorder->errors());
    const QRegularExpression toDisplay(
        "(?m)^viewconnector-record: set the plug-in's ViewConnector:server to "
        "http://127.0.0.1:\\d+; its messages go on to the display at http://127.0.0.1:\\d+$");
    const QRegularExpression toPlugin(
        "(?m)^viewconnector-record: set the display's address of the plug-in to "
        "http://127.0.0.1:\\d+; its requests go on to the plug-in at http://[\\d.]+:38081$");
    const QRegularExpression end("(?m)^viewconnector-record: 1 messages to the display and 0 "
                                 "requests to the plug-in have passed$");
    for (const auto &line : {toDisplay, toPlugin, end})
        EXPECT_TRUE(line.match(errors).hasMatch()) << errors.toStdString();
}

TEST_F(RecorderProgram, Writes_to_standard_output_unless_told_otherwise)
{
    const auto recorder = startRecorder({});
    EXPECT_EQ(post(R"({"a":1})"), 200);
    ASSERT_TRUE(recorder->waitForOutputLines(1));
    EXPECT_EQ(support::json(recorder->outputLines()[0])["body"], (QJsonObject{{"a", 1}}));
    for (const int number : {SIGINT, SIGTERM}) {
        if (recorder->isRunning())
            recorder->signal(number);
        EXPECT_EQ(recorder->exitCode(), 0);
    }
    EXPECT_EQ(recorder->outputLines().size(), 1);
}

TEST_F(RecorderProgram, Has_every_line_in_the_file_when_it_is_killed)
{
    const auto recorder = startRecorder({"--output", path("recording.jsonl")});
    for (int n = 1; n <= 3; ++n)
        EXPECT_EQ(post(R"({"n":)" + QByteArray::number(n) + '}'), 200);
    recorder->signal(SIGKILL);
    recorder->exitCode();
    EXPECT_EQ(support::jsonLines(read("recording.jsonl")).size(), 3);
}

TEST_F(RecorderProgram, Passes_on_what_it_cannot_write_and_fails_in_the_end)
{
    Process recorder("bash", {"-c", "exec \"$@\" >/dev/full", "bash", RECORD, "--port", "0",
                              "--plugin-port", "0", "--display",
                              QString("http://127.0.0.1:%1").arg(displayPort)});
    ASSERT_TRUE(recorder.waitForErrors("requests go on to"));
    const QRegularExpression setting("ViewConnector:server to http://127.0.0.1:(\\d+);");
    messagePort = setting.match(QString(recorder.errors())).captured(1).toInt();
    EXPECT_EQ(post("{}"), 200);
    EXPECT_EQ(post("{}"), 200);
    EXPECT_EQ(display.requestCount(), 2);
    recorder.signal(SIGTERM);
    EXPECT_EQ(recorder.exitCode(), 1);
    EXPECT_EQ(recorder.errors().count("the recording ends here"), 1);
}

TEST_F(RecorderProgram, Shows_a_display_that_is_away_and_finds_it_again)
{
    display.goDown();
    const auto recorder = startRecorder({"--output", path("recording.jsonl")});
    support::RawClient client(messagePort);
    client.send(support::RawClient::request("/content", "{}"));
    EXPECT_TRUE(client.waitForClose());
    EXPECT_EQ(client.received(), "");
    display.comeUp();
    EXPECT_EQ(post("{}"), 200);
    const auto lines = support::jsonLines(read("recording.jsonl"));
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0]["status"], 0);
    EXPECT_NE(lines[0]["error"].toString(), "");
    EXPECT_EQ(lines[1]["status"], 200);
}
