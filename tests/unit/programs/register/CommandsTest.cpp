#include <register/Commands.h>

#include <register/CommandError.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

class CommandsTest : public testing::Test
{
protected:
    CommandsTest()
    {
        for (const auto *name : {"open", "close"})
            commands.add(name, [this, name = QString(name)](const QJsonObject &command) {
                ran.append(name + command["n"].toString());
            });
    }

    QString errorOf(const QByteArray &command) const
    {
        try {
            commands.run(support::json(command));
        } catch (const CommandError &error) {
            return QString::fromUtf8(error.what());
        }
        return "no error";
    }

    QStringList ran;
    Commands commands;
};

} // namespace

TEST_F(CommandsTest, Run_the_one_that_is_named_with_the_whole_command)
{
    commands.run(support::json(R"({"do":"close","n":"1"})"));
    commands.run(support::json(R"({"n":"2","do":"open"})"));
    EXPECT_EQ(ran, (QStringList{"close1", "open2"}));
}

TEST_F(CommandsTest, Refuse_a_name_that_is_none_and_list_those_there_are)
{
    EXPECT_EQ(errorOf(R"({"do":"shut"})"), "\"shut\" is no command; there are: close, open");
    EXPECT_EQ(errorOf(R"({"do":"Open"})"), "\"Open\" is no command; there are: close, open");
    EXPECT_EQ(errorOf(R"({"do":""})"), "\"\" is no command; there are: close, open");
    EXPECT_TRUE(ran.isEmpty());
}

TEST_F(CommandsTest, Need_a_name)
{
    EXPECT_EQ(errorOf("{}"), "\"do\" is missing: give a text");
    EXPECT_EQ(errorOf(R"({"do":1})"), "\"do\" has the wrong type: give a text");
    EXPECT_EQ(errorOf(R"({"Do":"open"})"), "\"do\" is missing: give a text");
}

TEST_F(CommandsTest, Pass_on_what_a_handler_finds_wrong)
{
    commands.add("sell", [](const QJsonObject &) { throw CommandError("sold out"); });
    EXPECT_EQ(errorOf(R"({"do":"sell"})"), "sold out");
}
