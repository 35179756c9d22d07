#include "RunEvents.h"

#include <register/CommandLoop.h>

#include <register/CommandError.h>

#include <common/UsageError.h>

#include <support/OutputCapture.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <gmock/gmock.h>

#include <optional>

namespace {

class CommandLoopTest : public testing::Test
{
protected:
    CommandLoopTest()
    {
        clock.start();
        commands.add("note", [this](const QJsonObject &command) {
            notes.append(command["text"].toString());
            times.append(clock.elapsed());
        });
        commands.add("fail", [](const QJsonObject &) { throw CommandError("it \"failed\""); });
    }

    /// Runs a file of commands to its end; returns what was printed.
    QByteArray play(const QByteArray &content)
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        return support::outputOf(stdout, [this] {
            CommandLoop loop(runner.emplace(commands), fileName);
            QObject::connect(&loop, &CommandLoop::finished, [this] { ++endings; });
            runEventsUntil([this] { return endings > 0; });
            support::letPass(std::chrono::milliseconds(20)); // nothing may follow
            failed = runner->hasFailed();
        });
    }

    QTemporaryDir folder;
    const QString fileName = folder.filePath("commands.jsonl");
    Commands commands;
    std::optional<CommandRunner> runner;
    QElapsedTimer clock;
    QStringList notes;
    QList<qint64> times; // of the notes
    int endings = 0;
    bool failed = false;
};

} // namespace

TEST_F(CommandLoopTest, Runs_the_lines_in_order_and_answers_each)
{
    EXPECT_EQ(play("{\"do\":\"note\",\"text\":\"a\"}\n{\"text\":\"b\",\"do\":\"note\"}\n"),
              "{\"n\":1,\"do\":\"note\",\"ok\":true}\n{\"n\":2,\"do\":\"note\",\"ok\":true}\n");
    EXPECT_EQ(notes, (QStringList{"a", "b"}));
    EXPECT_FALSE(failed);
    EXPECT_EQ(endings, 1);
}

TEST_F(CommandLoopTest, Reports_a_wrong_line_and_runs_the_next)
{
    EXPECT_EQ(play("{\"do\":\"fail\"}\n{\"do\":\"note\"}\n{\"do\":\"нет\"}\n"),
              "{\"n\":1,\"do\":\"fail\",\"ok\":false,\"error\":\"it \\\"failed\\\"\"}\n"
              "{\"n\":2,\"do\":\"note\",\"ok\":true}\n"
              "{\"n\":3,\"do\":\"нет\",\"ok\":false,"
              "\"error\":\"\\\"нет\\\" is no command; there are: fail, note\"}\n");
    EXPECT_TRUE(failed);
    EXPECT_EQ(notes.size(), 1);
}

TEST_F(CommandLoopTest, Reports_a_line_that_is_no_command_at_all)
{
    const QByteArray start = "{\"n\":1,\"do\":\"\",\"ok\":false,\"error\":\"";
    EXPECT_TRUE(play("rubbish\n").startsWith(start + "the line is no JSON: "));
    EXPECT_EQ(play("[1]\n"), start + "the line is no JSON object\"}\n");
    EXPECT_TRUE(play("{\"do\":\"note\"\n").startsWith(start + "the line is no JSON: "));
    EXPECT_TRUE(play("{\"a\":x}\n").endsWith(" at byte 5\"}\n"));
    EXPECT_EQ(play("{}\n"), start + "\\\"do\\\" is missing: give a text\"}\n");
    EXPECT_EQ(play("{\"do\":7}\n"), start + "\\\"do\\\" has the wrong type: give a text\"}\n");
    EXPECT_TRUE(notes.isEmpty());
}

TEST_F(CommandLoopTest, Does_not_count_blank_lines)
{
    EXPECT_EQ(play("\n  \r\n{\"do\":\"note\"}\r\n\n\t\n{\"do\":\"note\"}"),
              "{\"n\":1,\"do\":\"note\",\"ok\":true}\n{\"n\":2,\"do\":\"note\",\"ok\":true}\n");
}

TEST_F(CommandLoopTest, Counts_wrong_lines)
{
    EXPECT_TRUE(
        play("x\n\n{\"do\":\"note\"}\n").endsWith("{\"n\":2,\"do\":\"note\",\"ok\":true}\n"));
}

TEST_F(CommandLoopTest, Ends_a_file_without_commands)
{
    for (const auto *content : {"", "\n\n"}) {
        endings = 0;
        EXPECT_EQ(play(content), "");
        EXPECT_EQ(endings, 1);
        EXPECT_FALSE(failed);
    }
}

TEST_F(CommandLoopTest, Waits_as_long_as_asked_and_no_longer_than_once)
{
    const auto output = play("{\"do\":\"note\"}\n{\"do\":\"wait\",\"ms\":150}\n"
                             "{\"do\":\"note\"}\n{\"do\":\"note\"}\n");
    EXPECT_EQ(output.count("\"ok\":true"), 4);
    ASSERT_EQ(times.size(), 3);
    EXPECT_GE(times[1] - times[0], 149);
    EXPECT_LT(times[2] - times[1], 149);
}

TEST_F(CommandLoopTest, Runs_other_events_while_it_waits_and_between_two_commands)
{
    bool ran = false;
    commands.add("ask", [&](const QJsonObject &) { QTimer::singleShot(0, [&] { ran = true; }); });
    commands.add("expect", [&](const QJsonObject &) {
        if (!ran)
            throw CommandError("no event ran");
    });
    play("{\"do\":\"ask\"}\n{\"do\":\"expect\"}\n");
    EXPECT_FALSE(failed);
}

TEST_F(CommandLoopTest, Refuses_a_wait_that_is_none)
{
    EXPECT_THAT(play("{\"do\":\"wait\"}\n").toStdString(),
                testing::HasSubstr(R"(\"ms\" is missing: give a whole number)"));
    EXPECT_THAT(play("{\"do\":\"wait\",\"ms\":-1}\n").toStdString(),
                testing::HasSubstr(R"(\"ms\" must not be below 0)"));
    EXPECT_THAT(play("{\"do\":\"wait\",\"ms\":\"1\"}\n").toStdString(),
                testing::HasSubstr(R"(\"ms\" has the wrong type: give a whole number)"));
    EXPECT_TRUE(failed);
}

TEST_F(CommandLoopTest, Stops_at_quit)
{
    EXPECT_EQ(play("{\"do\":\"note\"}\n{\"do\":\"quit\"}\n{\"do\":\"note\"}\n"),
              "{\"n\":1,\"do\":\"note\",\"ok\":true}\n{\"n\":2,\"do\":\"quit\",\"ok\":true}\n");
    EXPECT_EQ(notes.size(), 1);
    EXPECT_EQ(endings, 1);
}

TEST_F(CommandLoopTest, Stops_when_someone_else_asks_to_quit)
{
    commands.add("ask", [this](const QJsonObject &) {
        QTimer::singleShot(0, &runner.value(), [this] {
            runner->run(R"({"do":"quit"})", CommandRunner::Source::Page);
        });
    });
    play("{\"do\":\"ask\"}\n{\"do\":\"wait\",\"ms\":1}\n{\"do\":\"note\"}\n");
    EXPECT_TRUE(notes.isEmpty());
    EXPECT_EQ(endings, 1);
}

TEST_F(CommandLoopTest, Is_not_paused_by_the_commands_of_others)
{
    commands.add("others", [this](const QJsonObject &) {
        QTimer::singleShot(0, &runner.value(), [this] {
            runner->run(R"({"do":"wait","ms":60000})", CommandRunner::Source::Page);
        });
    });
    const auto output =
        play("{\"do\":\"others\"}\n{\"do\":\"wait\",\"ms\":1}\n{\"do\":\"note\"}\n");
    EXPECT_EQ(output.count('\n'), 4);
    EXPECT_TRUE(output.endsWith("{\"n\":4,\"do\":\"note\",\"ok\":true}\n")) << output.toStdString();
    EXPECT_EQ(notes.size(), 1);
}

TEST_F(CommandLoopTest, Reports_both_parts_of_a_line_that_is_too_long)
{
    const auto output = play("{\"do\":\"note\",\"x\":\"" + QByteArray(1100 * 1024, 'x') +
                             "\"}\n{\"do\":\"note\"}\n");
    EXPECT_EQ(output.count("\"ok\":false"), 2);
    EXPECT_TRUE(output.endsWith("{\"n\":3,\"do\":\"note\",\"ok\":true}\n"));
}

TEST_F(CommandLoopTest, Needs_a_file_that_can_be_opened)
{
    EXPECT_THROW(CommandLoop(runner.emplace(commands), fileName), UsageError);
}
