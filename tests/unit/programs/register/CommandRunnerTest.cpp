#include <register/CommandRunner.h>

#include <register/CommandError.h>

#include <support/OutputCapture.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

using Source = CommandRunner::Source;

class CommandRunnerTest : public testing::Test
{
protected:
    struct Told
    {
        QByteArray text;
        CommandAnswer answer;
        Source source;
    };

    CommandRunnerTest()
    {
        commands.add("note", [this](const QJsonObject &) { ++notes; });
        commands.add("fail", [](const QJsonObject &) { throw CommandError("it failed"); });
        QObject::connect(
            &runner, &CommandRunner::answered,
            [this](const QByteArray &text, const CommandAnswer &answer, Source source) {
                told.append({text, answer, source});
            });
        QObject::connect(&runner, &CommandRunner::waitRequested, [this](int ms, Source source) {
            waits.append({ms, source});
        });
        QObject::connect(&runner, &CommandRunner::quitRequested, [this] { ++quits; });
    }

    /// Runs a command; what it prints is kept.
    CommandAnswer run(const QByteArray &text, Source source = Source::Page)
    {
        CommandAnswer answer;
        printed += support::outputOf(stdout, [&] { answer = runner.run(text, source); });
        return answer;
    }

    Commands commands;
    CommandRunner runner{commands};
    QByteArray printed;
    QList<Told> told;
    QList<std::pair<int, Source>> waits;
    int quits = 0;
    int notes = 0;
};

} // namespace

TEST_F(CommandRunnerTest, Numbers_and_prints_in_one_sequence_wherever_commands_come_from)
{
    EXPECT_EQ(run(R"({"do":"note"})", Source::Script).number, 1);
    EXPECT_EQ(run(R"({"do":"fail"})", Source::Page).number, 2);
    EXPECT_EQ(run(R"({"do":"note"})", Source::Script).number, 3);
    EXPECT_EQ(printed, "{\"n\":1,\"do\":\"note\",\"ok\":true}\n"
                       "{\"n\":2,\"do\":\"fail\",\"ok\":false,\"error\":\"it failed\"}\n"
                       "{\"n\":3,\"do\":\"note\",\"ok\":true}\n");
    EXPECT_EQ(notes, 2);
}

TEST_F(CommandRunnerTest, Tells_of_each_command_its_answer_and_where_it_came_from)
{
    run(R"({"do":"note","text":"a"})", Source::Script);
    run(R"({"do":"fail"})", Source::Page);
    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told[0].text, R"({"do":"note","text":"a"})");
    EXPECT_TRUE(told[0].answer.isOk());
    EXPECT_EQ(told[0].source, Source::Script);
    EXPECT_EQ(told[1].answer.error, "it failed");
    EXPECT_EQ(told[1].source, Source::Page);
}

TEST_F(CommandRunnerTest, Answers_what_is_no_command_as_wrong)
{
    EXPECT_TRUE(run("rubbish").error.startsWith("the line is no JSON: "));
    EXPECT_EQ(run("[1]").error, "the line is no JSON object");
    EXPECT_EQ(run("{}").error, "\"do\" is missing: give a text");
    ASSERT_EQ(told.size(), 3);
    EXPECT_EQ(told[0].text, "rubbish");
    EXPECT_EQ(told[0].answer.name, "");
}

TEST_F(CommandRunnerTest, Asks_whoever_sent_a_wait_to_pause)
{
    EXPECT_TRUE(run(R"({"do":"wait","ms":150})", Source::Script).isOk());
    EXPECT_TRUE(run(R"({"do":"wait","ms":0})", Source::Page).isOk());
    EXPECT_EQ(run(R"({"do":"wait","ms":-1})").error, "\"ms\" must not be below 0");
    EXPECT_EQ(waits, (QList<std::pair<int, Source>>{{150, Source::Script}, {0, Source::Page}}));
}

TEST_F(CommandRunnerTest, Asks_to_quit)
{
    run(R"({"do":"note"})");
    EXPECT_EQ(quits, 0);
    EXPECT_TRUE(run(R"({"do":"quit"})").isOk());
    EXPECT_EQ(quits, 1);
}
