#include "RecordedShop.h"

#include <support/ScriptedServer.h>

namespace {

class ReplayProgram : public RecordedShop
{
protected:
    /// A recording of messages a millisecond apart, as the display writes it.
    QString recording(int count, const QByteArray &more = {}) const
    {
        QByteArray lines;
        for (int n = 0; n < count; ++n) {
            const auto number = QByteArray::number(n);
            lines += R"({"n":)" + number + R"(,"ms":)" + number +
                     R"(,"path":"/updateDocument","body":{"number":)" + number +
                     "},\"status\":200}\n";
        }
        return write("recording.jsonl", lines + more);
    }

    std::unique_ptr<Process> play(const QString &file, const QStringList &options = {}) const
    {
        return std::make_unique<Process>(
            QStringLiteral(REPLAY), QStringList{"--recording", file, "--display",
                                                QString("http://127.0.0.1:%1").arg(displayPort)} +
                                        options);
    }
};

} // namespace

TEST_F(ReplayProgram, Gives_a_display_the_recorded_messages)
{
    const auto display = startDisplay();
    const auto file = recording(20);
    const auto replay = play(file, {"--speed", "0", "--json"});
    EXPECT_EQ(replay->exitCode(), 0) << replay->errors().toStdString();
    EXPECT_EQ(replay->errors(), "");
    const auto lines = support::jsonLines(replay->output());
    ASSERT_EQ(lines.size(), 21);
    EXPECT_EQ(lines.constLast()["accepted"], 20);
    const auto messages = record();
    ASSERT_EQ(messages.size(), 20);
    for (int n = 0; n < 20; ++n)
        EXPECT_EQ(messages[n]["body"], (QJsonObject{{"number", n}}));
}

TEST_F(ReplayProgram, Fails_when_the_display_is_down_or_refuses)
{
    displayPort = 1; // nobody is there
    const auto file = recording(2);
    const auto alone = play(file);
    EXPECT_EQ(alone->exitCode(), 1);
    EXPECT_TRUE(alone->output().endsWith("Sent 2 messages: 0 accepted, 0 refused, 2 without an "
                                         "answer; 0 of the recording passed over\n"))
        << alone->output().toStdString();

    support::ScriptedServer display;
    display.answer(support::ScriptedAnswer::status(500));
    displayPort = display.port();
    EXPECT_EQ(play(file)->exitCode(), 1);
    EXPECT_EQ(display.requestCount(), 2);
}

TEST_F(ReplayProgram, Sends_nothing_of_a_broken_recording)
{
    const support::ScriptedServer display;
    displayPort = display.port();
    const auto file = recording(2, "{broken\n");
    const auto broken = play(file);
    EXPECT_EQ(broken->exitCode(), 2);
    EXPECT_TRUE(broken->errors().startsWith("viewconnector-replay: --recording " + file.toUtf8() +
                                            ":3: not JSON: "))
        << broken->errors().toStdString();
    EXPECT_EQ(play(recording(0))->exitCode(), 2);
    EXPECT_EQ(display.requestCount(), 0);
}

TEST_F(ReplayProgram, Ends_in_order_when_told_to)
{
    const support::ScriptedServer display;
    displayPort = display.port();
    const auto file = recording(1, "{\"ms\":3600000,\"path\":\"/content\",\"body\":{}}\n");
    for (const int number : {SIGINT, SIGTERM}) {
        const auto replay = play(file);
        ASSERT_TRUE(replay->waitForOutputLines(1));
        replay->signal(number);
        EXPECT_EQ(replay->exitCode(), 1) << "not all of it was sent";
        EXPECT_TRUE(replay->output().contains("Sent 1 messages: 1 accepted"))
            << replay->output().toStdString();
    }
}
