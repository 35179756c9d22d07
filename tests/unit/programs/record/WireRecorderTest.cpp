#include <record/WireRecorder.h>

#include <common/UsageError.h>

#include <support/Json.h>
#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/RawClient.h>
#include <support/ScriptedServer.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using support::RawClient;
using support::ScriptedAnswer;

class WireRecorderTest : public testing::Test
{
protected:
    WireRecorderTest()
    {
        options.displayUrl = display.url();
        options.pluginUrl = plugin.url();
        options.port = 0;
        options.pluginPort = 0;
        options.output = folder.filePath("recording.jsonl");
    }

    static RawClient::Answer post(int port, const QByteArray &path, const QByteArray &body)
    {
        RawClient client(port);
        client.send(RawClient::request(path, body));
        return client.answer();
    }

    QByteArray content() const
    {
        QFile file(options.output);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QTemporaryDir folder;
    support::LogCapture log;
    support::ScriptedServer display;
    support::ScriptedServer plugin;
    RecordOptions options;
};

} // namespace

TEST_F(WireRecorderTest, Writes_both_directions_in_their_order)
{
    const WireRecorder recorder(options);
    ASSERT_TRUE(recorder.isListening());
    EXPECT_EQ(post(recorder.port(), "/content", R"({"a":1})").status, 200);
    EXPECT_EQ(post(recorder.pluginPort(), "/", R"({"name":"getImage"})").status, 200);
    display.answer(ScriptedAnswer::status(500));
    EXPECT_EQ(post(recorder.port(), "/content", R"({"a":2})").status, 500);

    EXPECT_EQ(display.requestCount(), 2);
    EXPECT_EQ(plugin.requestCount(), 1);
    const auto lines = support::jsonLines(content());
    ASSERT_EQ(lines.size(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(lines[i]["n"].toInt(), i + 1);
    EXPECT_EQ(lines[0]["to"], "display");
    EXPECT_EQ(lines[0]["body"], (QJsonObject{{"a", 1}}));
    EXPECT_EQ(lines[1]["to"], "plug-in");
    EXPECT_EQ(lines[1]["body"], (QJsonObject{{"name", "getImage"}}));
    EXPECT_EQ(lines[2]["status"], 500);
    EXPECT_GE(lines[0]["ms"].toDouble(), 0);
    EXPECT_GT(lines[2]["ms"].toDouble(), lines[0]["ms"].toDouble());
    EXPECT_EQ(recorder.messages(), 2);
    EXPECT_EQ(recorder.requests(), 1);
    EXPECT_TRUE(recorder.isComplete());
}

TEST_F(WireRecorderTest, Has_the_line_in_the_file_before_the_client_has_its_answer)
{
    const WireRecorder recorder(options);
    for (int n = 1; n <= 5; ++n) {
        ASSERT_EQ(post(recorder.port(), "/content", "{}").status, 200);
        ASSERT_EQ(content().count('\n'), n);
    }
}

TEST_F(WireRecorderTest, Tells_a_display_that_does_not_answer)
{
    display.goDown();
    const WireRecorder recorder(options);
    RawClient client(recorder.port());
    client.send(RawClient::request("/content", R"({"a":1})"));
    EXPECT_TRUE(client.waitForClose());
    const auto lines = support::jsonLines(content());
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0]["status"], 0);
    EXPECT_NE(lines[0]["error"].toString(), "");
}

TEST_F(WireRecorderTest, Redacts_unless_told_not_to)
{
    for (const bool redacts : {true, false}) {
        options.redacts = redacts;
        options.output = folder.filePath(redacts ? "redacted" : "whole");
        const WireRecorder recorder(options);
        post(recorder.port(), "/content", R"({"a":"4111111111111111"})");
        post(recorder.pluginPort(), "/?key=4111111111111111", "{}");
        EXPECT_EQ(content().contains("4111111111111111"), !redacts);
        EXPECT_EQ(display.requests().constLast().body, R"({"a":"4111111111111111"})");
    }
}

TEST_F(WireRecorderTest, Names_the_port_that_cannot_be_used)
{
    options.port = display.port();
    {
        const WireRecorder recorder(options);
        EXPECT_FALSE(recorder.isListening());
        EXPECT_EQ(recorder.failedOption(), "port");
        EXPECT_NE(recorder.errorString(), "");
    }
    options.port = 0;
    options.pluginPort = plugin.port();
    const WireRecorder recorder(options);
    EXPECT_FALSE(recorder.isListening());
    EXPECT_EQ(recorder.failedOption(), "plugin-port");
    EXPECT_NE(recorder.errorString(), "");
    EXPECT_FALSE(QFile::exists(options.output)) << "nothing is written before the ports are ours";
}

TEST_F(WireRecorderTest, Refuses_a_file_that_exists)
{
    QFile file(options.output);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_THROW(WireRecorder{options}, UsageError);
}
