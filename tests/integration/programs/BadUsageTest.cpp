#include "ProgramFixture.h"

#include <QTcpServer>

namespace {

class BadUsage : public ProgramFixture
{
protected:
    /// Runs a program that must end with `code` and say why in one line of its own on standard
    /// error, besides its log lines, without a word on standard output. Returns the line without
    /// the program's name.
    QString complaint(const char *program, const QStringList &arguments, int code = 2) const
    {
        Process process(program, arguments);
        EXPECT_EQ(process.exitCode(), code) << arguments.join(' ').toStdString();
        EXPECT_EQ(process.output(), "");

        static const QRegularExpression logLine("^\\d{4}-\\d\\d-\\d\\dT.* (INFO|WARN|ERROR) ");
        QStringList lines = QString::fromUtf8(process.errors()).split('\n');
        EXPECT_EQ(lines.takeLast(), "") << "the last line has no end";
        lines.removeIf([](const QString &line) { return logLine.match(line).hasMatch(); });
        EXPECT_EQ(lines.size(), 1) << process.errors().toStdString();

        const QString prefix = QFileInfo(program).fileName() + ": ";
        EXPECT_TRUE(lines.value(0).startsWith(prefix)) << lines.value(0).toStdString();
        return lines.value(0).mid(prefix.size());
    }

    QString complaintOfRegister(const QStringList &arguments, int code = 2) const
    {
        return complaint(REGISTER, arguments, code);
    }

    QString complaintOfDisplay(const QStringList &arguments, int code = 2) const
    {
        return complaint(DISPLAY_PROGRAM, arguments, code);
    }

    QString withPlugin(const QString &file) const
    {
        return complaintOfRegister({"--config", config(), "--plugin", file});
    }
};

void expectStart(const QString &text, const QString &start)
{
    EXPECT_TRUE(text.startsWith(start)) << text.toStdString();
    EXPECT_GT(text.size(), start.size()) << "the reason is missing";
}

} // namespace

TEST_F(BadUsage, Of_options_is_named_with_the_mend)
{
    EXPECT_EQ(complaintOfRegister({}), "--config is missing: give the settings file, for example "
                                       "--config demo/shop.toml.");
    for (const auto *program :
         {REGISTER, DISPLAY_PROGRAM, ADSERVICE, SUMMARY, RECORD, REPLAY, DOCTOR}) {
        EXPECT_EQ(complaint(program, {"--bogus"}), "Unknown option 'bogus'. See --help.");
        EXPECT_EQ(complaint(program, {"extra"}), "Unexpected argument \"extra\". See --help.");
    }
    EXPECT_EQ(complaintOfRegister({"--config"}), "Missing value after '--config'. See --help.");
}

TEST_F(BadUsage, Of_the_registers_pages_is_named_with_the_mend)
{
    EXPECT_EQ(complaintOfRegister({"--config", config(), "--page", "70000"}),
              "--page \"70000\" is no port: give a number from 0 to 65535.");
    EXPECT_EQ(complaintOfRegister({"--config", config(), "--inspector", "38080"}),
              "--inspector \"38080\" is no address: give one like http://127.0.0.1:38080.");
}

TEST_F(BadUsage, Of_a_settings_file_is_named_with_its_place)
{
    const auto missing = path("none.toml");
    EXPECT_EQ(complaintOfRegister({"--config", missing}),
              missing + ": cannot be read: No such file or directory");
    expectStart(complaintOfRegister({"--config", folder.path()}),
                folder.path() + ": cannot be read: ");
    const auto broken = write("broken.toml", "[Host]\nlanguage = \"ru\"\n\n[View\nx = 1\n");
    expectStart(complaintOfRegister({"--config", broken}), broken + ":4:6: ");
    const auto twice = write("twice.toml", "[a]\nx = 1\n x = 2\n");
    expectStart(complaintOfRegister({"--config", twice}), twice + ":3:6: ");
}

TEST_F(BadUsage, Of_the_catalogue_is_named_with_its_place)
{
    const auto file = config();
    write("goods.toml", "[[goods]]\ncode = \n");
    expectStart(complaintOfRegister({"--config", file}), path("goods.toml") + ":2:");
    write("goods.toml", "");
    EXPECT_EQ(complaintOfRegister({"--config", file}),
              path("goods.toml") + ": no goods in it: add tables named [[goods]]");
    ASSERT_TRUE(QFile::remove(path("goods.toml")));
    EXPECT_EQ(complaintOfRegister({"--config", file}),
              path("goods.toml") + ": cannot be read: No such file or directory");
}

TEST_F(BadUsage, Of_a_plugin_is_named_with_the_reason)
{
    EXPECT_EQ(withPlugin(path("none.so")), path("none.so") + ": no such plug-in file");
    const auto text = write("text.so", "no library");
    expectStart(withPlugin(text), text + ": not a Qt plug-in: ");
    expectStart(withPlugin(folder.path()), folder.path() + ": not a Qt plug-in: ");
    expectStart(withPlugin(REGISTER), QStringLiteral(REGISTER) + ": not a Qt plug-in: ");
    EXPECT_EQ(withPlugin(FOREIGN_INTERFACE_PLUGIN),
              QStringLiteral(FOREIGN_INTERFACE_PLUGIN) +
                  ": its interface is \"org.example.OtherPlugin\", expected "
                  "\"su.tavro.AbstractPlugin\"");
    EXPECT_EQ(withPlugin(FOREIGN_OBJECT_PLUGIN),
              QStringLiteral(FOREIGN_OBJECT_PLUGIN) + ": its object is not a plug-in of this host");
}

TEST_F(BadUsage, Of_a_plugin_that_cannot_start_is_named)
{
    const auto file = write("refusing.toml", "[RecordingPlugin]\ninit = false\n");
    EXPECT_EQ(complaintOfRegister({"--config", file, "--plugin", RECORDING_PLUGIN}),
              QStringLiteral(RECORDING_PLUGIN) +
                  ": the plug-in's init() returned false: see its log lines, or choose another "
                  "with --plugin");
}

TEST_F(BadUsage, Of_the_commands_file_is_named)
{
    EXPECT_EQ(complaintOfRegister({"--config", config(), "--commands", path("none.jsonl")}),
              "--commands " + path("none.jsonl") + " cannot be read: No such file or directory.");
    EXPECT_EQ(complaintOfRegister({"--config", config(), "--commands", folder.path()}),
              "--commands " + folder.path() + " cannot be read: Is a directory.");
}

TEST_F(BadUsage, Of_the_report_is_named)
{
    for (const auto &name : {path("none/report.json"), folder.path(), QString("/dev/full")})
        expectStart(complaintOfRegister({"--config", config(), "--report", name}),
                    "--report " + name + ": ");
}

TEST_F(BadUsage, Of_the_displays_options_is_named_with_the_mend)
{
    EXPECT_EQ(complaintOfDisplay({"--port", "70000"}),
              "--port \"70000\" is no port: give a number from 0 to 65535.");
    EXPECT_EQ(complaintOfDisplay({"--plugin-url", "38081"}),
              "--plugin-url \"38081\" is no address: give one like http://127.0.0.1:38081.");
    for (const auto &name : {path("none/record.jsonl"), folder.path()})
        expectStart(complaintOfDisplay({"--port", "0", "--record", name}),
                    "--record " + name + ": ");
}

TEST_F(BadUsage, Of_the_ad_services_options_is_named_with_the_mend)
{
    EXPECT_EQ(complaint(ADSERVICE, {"--stream", "one"}),
              "--stream \"one\" does not fit: give a number from 0 to 2147483647.");
    EXPECT_EQ(complaint(ADSERVICE, {"--listen", "38083"}),
              "--listen \"38083\" is no address: give one like 127.0.0.1:38083.");
    EXPECT_EQ(complaint(ADSERVICE, {"--ads", path("none")}),
              "--ads \"" + path("none") +
                  "\" is no folder that can be read: give one like demo/ads.");
    expectStart(complaint(ADSERVICE, {"--fault", "none"}),
                "--fault \"none\" is unknown: give one of refuse, ");
}

TEST_F(BadUsage, Of_a_port_in_use_is_a_failure_with_the_mend)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    const auto port = QString::number(other.serverPort());
    for (const auto *program : {DISPLAY_PROGRAM, ADSERVICE, RECORD})
        EXPECT_EQ(complaint(program, {"--port", port}, 1),
                  "port " + port +
                      " cannot be opened: Address already in use. Stop the program that uses it "
                      "or choose another with --port.");
    EXPECT_EQ(complaintOfRegister({"--config", config(), "--page", port}, 1),
              "port " + port +
                  " cannot be opened: Address already in use. Stop the program that uses it or "
                  "choose another with --page.");
}

TEST_F(BadUsage, Of_the_recorders_options_is_named_with_the_mend)
{
    EXPECT_EQ(complaint(RECORD, {"--display", "38080"}),
              "--display \"38080\" is no address: give one like http://127.0.0.1:38080.");
    EXPECT_EQ(complaint(RECORD, {"--plugin-port", "70000"}),
              "--plugin-port \"70000\" is no port: give a number from 0 to 65535.");
    const auto used = write("recording.jsonl", "precious\n");
    const QStringList freePorts{"--port", "0", "--plugin-port", "0", "--output"};
    const auto text = complaint(RECORD, freePorts + QStringList{used});
    expectStart(text, "--output " + used + ": ");
    EXPECT_TRUE(text.endsWith(" Choose another name, or remove the file.")) << text.toStdString();
    EXPECT_EQ(read("recording.jsonl"), "precious\n");
    expectStart(complaint(RECORD, freePorts + QStringList{path("none/recording.jsonl")}),
                "--output " + path("none/recording.jsonl") + ": ");
}

TEST_F(BadUsage, Of_a_replay_is_named_with_the_mend)
{
    EXPECT_EQ(complaint(REPLAY, {}), "--recording is missing. See --help.");
    EXPECT_EQ(complaint(REPLAY, {"--recording", path("none")}),
              "--recording " + path("none") + ": No such file or directory.");
    const auto empty = write("empty.jsonl", "\n");
    EXPECT_EQ(complaint(REPLAY, {"--recording", empty}),
              "--recording " + empty + " has no message that a display accepted: give another.");
    EXPECT_EQ(complaint(REPLAY, {"--recording", empty, "--speed", "fast"}),
              "--speed \"fast\" does not fit: give 0, or a number from 0.001 to 1000000.");
    const auto commands = write("commands.jsonl", "\n{\"do\":\"open\"}\n");
    EXPECT_EQ(complaint(REPLAY, {"--recording", commands}),
              "--recording " + commands +
                  ":2: \"path\" is missing. Give a recording of a register's messages.");
}

TEST_F(BadUsage, Of_a_port_in_use_leaves_the_other_displays_record_alone)
{
    const auto display = startDisplay();
    write("record.jsonl", "{\"n\":1}\n");
    complaintOfDisplay({"--port", QString::number(displayPort), "--record", path("record.jsonl")},
                       1);
    EXPECT_EQ(read("record.jsonl"), "{\"n\":1}\n");
}

TEST_F(BadUsage, Of_the_summarys_files_is_named_with_the_mend)
{
    const auto report = write("report.json", R"({"asked":{},"document":{}})");
    const auto record = write("record.jsonl", "{\"n\":1}\n\n[1]\n");
    const auto broken = write("broken.json", "{");
    const auto complain = [&](const QStringList &arguments) {
        return complaint(SUMMARY, arguments);
    };
    EXPECT_EQ(complain({}), "--report is missing. See --help.");
    EXPECT_EQ(complain({"--report", report}), "--record is missing. See --help.");
    expectStart(complain({"--report", path("none"), "--record", record}),
                "--report " + path("none") + ": ");
    expectStart(complain({"--report", report, "--record", path("none")}),
                "--record " + path("none") + ": ");
    EXPECT_EQ(complain({"--report", broken, "--record", record}),
              "--report " + broken + " is no JSON object: see --help for what to give.");
    EXPECT_EQ(complain({"--report", report, "--record", record}),
              "--record " + record + ":3 is no JSON object: see --help for what to give.");
}

TEST_F(BadUsage, Of_the_doctors_options_is_named_with_the_mend)
{
    EXPECT_EQ(complaint(DOCTOR, {}),
              "--config is missing: give the register's settings file, for example "
              "--config /etc/viewconnector/shop.toml.");
    EXPECT_EQ(complaint(DOCTOR, {"--config", config(), "--language", "de"}),
              "--language \"de\" is unknown: give ru or en.");
    EXPECT_EQ(complaint(DOCTOR, {"--config", path("none.toml")}),
              path("none.toml") + ": cannot be read: No such file or directory");
}
