#include "ProgramFixture.h"

namespace {

struct Program
{
    const char *name;
    const char *file;
    QByteArrayList options;
};

const Program programs[] = {
    {"register",
     REGISTER,
     {"--config <FILE>", "--plugin <FILE>", "--images <DIR>", "--commands <FILE|->",
      "--report <FILE>", "--stay", "--page <PORT>", "--inspector <URL>"}},
    {"display",
     DISPLAY_PROGRAM,
     {"--port <PORT>", "--plugin-url <URL>", "--record <FILE>", "--page <PORT>", "--state <FILE>",
      "--check", "--report <FILE>", "--down", "--error", "--slow <MS>"}},
    {"adservice",
     ADSERVICE,
     {"--port <PORT>", "--listen <HOST:PORT>", "--stream <N>", "--key <KEY>", "--ads <DIR>",
      "--frame-ms <MS>", "--stream-seconds <S>", "--answer-after <MS>", "--fault <NAME>"}},
    {"shop-summary", SUMMARY, {"--report <FILE>", "--record <FILE>"}},
    {"viewconnector-record",
     RECORD,
     {"--display <URL>", "--port <PORT>", "--plugin-url <URL>", "--plugin-port <PORT>",
      "--output <FILE>", "--unredacted"}},
    {"viewconnector-replay",
     REPLAY,
     {"--recording <FILE>", "--display <URL>", "--speed <FACTOR>", "--json"}},
    {"viewconnector-doctor",
     DOCTOR,
     {"--config <FILE>", "--plugin <FILE>", "--images <DIR>", "--json", "--bundle <FILE>",
      "--language <ru|en>"}},
};

class Help : public testing::TestWithParam<Program>
{
protected:
    const Program &program = GetParam();
};

} // namespace

TEST_P(Help, Names_every_option_and_is_no_failure)
{
    Process process(program.file, {"--help"});
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.errors(), "");
    const auto common = QByteArrayList{"--help", "--version", "--debug"};
    for (const auto &option : program.options + common)
        EXPECT_TRUE(process.output().contains(option)) << option.toStdString();
}

TEST_P(Help, Gives_the_version)
{
    Process process(program.file, {"--version"});
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.errors(), "");
    const QRegularExpression pattern(
        QString("^%1 \\d+\\.\\d+\\.\\d+\n$").arg(QRegularExpression::escape(program.name)));
    EXPECT_TRUE(pattern.match(QString(process.output())).hasMatch())
        << process.output().toStdString();
}

TEST_P(Help, Comes_before_anything_else_is_looked_at)
{
    if (QByteArray(program.name) == "shop-summary")
        EXPECT_EQ(Process(program.file, {"--help", "--report", "none"}).exitCode(), 0);
    else if (program.options.contains("--config <FILE>"))
        EXPECT_EQ(Process(program.file, {"--help", "--config", "none"}).exitCode(), 0);
    else if (QByteArray(program.name) == "viewconnector-replay")
        EXPECT_EQ(Process(program.file, {"--help", "--recording", "none"}).exitCode(), 0);
    else
        EXPECT_EQ(Process(program.file, {"--help", "--port", "none"}).exitCode(), 0);
}

INSTANTIATE_TEST_SUITE_P(Of, Help, testing::ValuesIn(programs), [](const auto &program) {
    return QString(program.param.name).remove(u'-').toStdString();
});
