#include "ProgramFixture.h"

namespace {

class RegisterCommands : public ProgramFixture
{
protected:
    /// Plays a script to its end; returns the lines printed.
    QByteArrayList play(const QByteArray &script, int exitCode)
    {
        process =
            startRegister({"--config", config(), "--commands", write("commands.jsonl", script)});
        EXPECT_EQ(process->exitCode(), exitCode) << process->errors().toStdString();
        return process->outputLines();
    }

    ProcessPtr process;
};

QByteArray fine(int number, const QByteArray &name)
{
    return "{\"n\":" + QByteArray::number(number) + ",\"do\":\"" + name + "\",\"ok\":true}";
}

} // namespace

TEST_F(RegisterCommands, Are_each_answered_by_one_line)
{
    const QByteArray names[] = {
        "init", "setting",      "document", "change", "action",  "event",  "open",
        "sell", "sell",         "discount", "void",   "content", "prices", "scroll",
        "qr",   "close-dialog", "draft",    "image",  "pay",     "wait",   "deinit"};
    const auto lines = play(R"({"do":"init"}
{"do":"setting","key":"View.Logic:showQrCode","value":false}
{"do":"document","properties":{"a":1}}
{"do":"change","properties":{"a":2}}
{"do":"action","context":6,"action":131}
{"do":"event","code":117,"arguments":{"scroll":"down"}}
{"do":"open"}
{"do":"sell","goods":"100","quantity":2}
{"do":"sell","goods":"101"}
{"do":"discount","percent":5}
{"do":"void","position":1}
{"do":"content","text":"Привет"}
{"do":"prices"}
{"do":"scroll"}
{"do":"qr"}
{"do":"close-dialog"}
{"do":"draft"}
{"do":"image","id":{"type":"GoodsCode","value":"100"}}
{"do":"pay"}
{"do":"wait","ms":1}
{"do":"deinit"}
)",
                            0);
    ASSERT_EQ(lines.size(), std::ssize(names));
    for (int i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i], fine(i + 1, names[i]));
}

TEST_F(RegisterCommands, That_are_wrong_are_reported_and_the_next_runs)
{
    EXPECT_EQ(play("{\"do\":\"open\"}\n"
                   "{\"do\":\"void\",\"position\":1}\n"
                   "\n"
                   "[1]\n"
                   "{\"do\":\"sell\",\"goods\":\"100\"}",
                   1),
              (QByteArrayList{fine(1, "open"),
                              R"({"n":2,"do":"void","ok":false,"error":"there is no position 1: )"
                              R"(the receipt has 0"})",
                              R"({"n":3,"do":"","ok":false,"error":"the line is no JSON object"})",
                              fine(4, "sell")}));
}

TEST_F(RegisterCommands, That_nobody_listens_to_are_fine)
{
    EXPECT_EQ(play("{\"do\":\"event\",\"code\":99999}\n"
                   "{\"do\":\"action\",\"context\":1,\"action\":99999}\n"
                   "{\"do\":\"deinit\"}\n"
                   "{\"do\":\"action\",\"context\":255,\"action\":197}\n",
                   0),
              (QByteArrayList{fine(1, "event"), fine(2, "action"), fine(3, "deinit"),
                              fine(4, "action")}));
}

TEST_F(RegisterCommands, Are_listed_when_one_is_unknown)
{
    const auto lines = play("{\"do\":\"dance\"}\n", 1);
    const auto error = support::json(lines.value(0))["error"].toString();
    EXPECT_TRUE(error.startsWith("\"dance\" is no command; there are: ")) << error.toStdString();
    for (const auto *name : {"event", "document", "change", "action", "setting", "image", "init",
                             "deinit", "open", "sell", "void", "discount", "qr", "prices", "scroll",
                             "draft", "content", "close-dialog", "pay"})
        EXPECT_TRUE(QString(error).contains(QString(" %1").arg(name))) << name;
}

TEST_F(RegisterCommands, Are_answered_one_by_one_while_standard_input_stays_open)
{
    process = startRegister({"--config", config(), "--commands", "-"});
    process->write("{\"do\":\"open\"}\n{\"do\":");
    ASSERT_TRUE(process->waitForOutputLines(1));
    EXPECT_EQ(process->outputLines(), QByteArrayList{fine(1, "open")});
    process->write("\"content\"}\n");
    ASSERT_TRUE(process->waitForOutputLines(2));
    EXPECT_TRUE(process->isRunning());
    process->write("{\"do\":\"open\"}"); // the last line may lack its end
    process->closeInput();
    EXPECT_EQ(process->exitCode(), 0);
    EXPECT_EQ(process->outputLines(),
              (QByteArrayList{fine(1, "open"), fine(2, "content"), fine(3, "open")}));
}

TEST_F(RegisterCommands, Take_pictures_from_the_folder_given)
{
    write("x.png", "picture");
    process = startRegister(
        {"--config", config(), "--images", folder.path(), "--commands",
         write("commands.jsonl", "{\"do\":\"image\",\"id\":{\"type\":\"Barcode\",\"value\":\"46\"},"
                                 "\"file\":\"x.png\"}\n")});
    EXPECT_EQ(process->exitCode(), 0);
    EXPECT_EQ(process->outputLines(), QByteArrayList{fine(1, "image")});
}

TEST_F(RegisterCommands, Leave_log_lines_on_standard_error_only)
{
    play("{\"do\":\"open\"}\n", 0);
    static const QRegularExpression logLine("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3} "
                                            "(INFO|WARN|ERROR) \\S+ .+$");
    auto lines = process->errors().split('\n');
    EXPECT_EQ(lines.takeLast(), "");
    EXPECT_FALSE(lines.isEmpty());
    for (const auto &line : lines)
        EXPECT_TRUE(logLine.match(QString::fromUtf8(line)).hasMatch()) << line.toStdString();
}
