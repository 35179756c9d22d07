#include <common/CommandLine.h>

#include <common/UsageError.h>

#include <support/OutputCapture.h>
#include <support/PrintQt.h>

#include <QRegularExpression>

#include <gmock/gmock.h>

namespace {

/// The options of a program with one option of each kind.
class ProgramOptions : public testing::Test
{
protected:
    ProgramOptions()
    {
        line.addOption("port", "Where to listen.", "PORT");
        line.addFlag("stay", "Go on.");
    }

    bool parse(QStringList arguments)
    {
        arguments.prepend("/some/folder/till");
        return line.parse(arguments);
    }

    std::string errorOf(const QStringList &arguments)
    {
        try {
            parse(arguments);
            line.port("port", 1);
        } catch (const UsageError &error) {
            return error.what();
        }
        return {};
    }

    CommandLine line{"A till for tests."};
};

} // namespace

TEST_F(ProgramOptions, Are_read)
{
    ASSERT_TRUE(parse({"--port", "8080", "--stay"}));
    EXPECT_TRUE(line.isSet("stay"));
    EXPECT_TRUE(line.isSet("port"));
    EXPECT_EQ(line.value("port"), "8080");
    EXPECT_EQ(line.port("port", 1), 8080);
    EXPECT_FALSE(line.debug());
}

TEST_F(ProgramOptions, May_join_a_value_with_an_equals_sign)
{
    ASSERT_TRUE(parse({"--port=0"}));
    EXPECT_EQ(line.port("port", 1), 0);
}

TEST_F(ProgramOptions, Are_all_off_when_there_are_none)
{
    ASSERT_TRUE(parse({}));
    EXPECT_FALSE(line.isSet("stay"));
    EXPECT_EQ(line.value("port"), "");
    EXPECT_EQ(line.port("port", 38080), 38080);
    EXPECT_FALSE(line.debug());
}

TEST_F(ProgramOptions, Have_debug_in_every_program)
{
    ASSERT_TRUE(parse({"--debug"}));
    EXPECT_TRUE(line.debug());
}

TEST_F(ProgramOptions, Accept_every_port_number)
{
    for (const int port : {0, 1, 38080, 65535}) {
        CommandLine fresh("A till.");
        fresh.addOption("port", "Where to listen.", "PORT");
        fresh.parse({"till", "--port", QString::number(port)});
        EXPECT_EQ(fresh.port("port", 1), port);
    }
}

TEST_F(ProgramOptions, Refuse_a_value_that_is_no_port_and_name_what_is)
{
    for (const auto *value : {"65536", "-1", "http", "", "80.5", "99999999999", "0x50"}) {
        CommandLine fresh("A till.");
        fresh.addOption("port", "Where to listen.", "PORT");
        fresh.parse({"till", QString("--port=%1").arg(value)});
        try {
            fresh.port("port", 1);
            ADD_FAILURE() << '"' << value << "\" was taken for a port";
        } catch (const UsageError &error) {
            EXPECT_EQ(std::string(error.what()),
                      std::string("--port \"") + value +
                          "\" is no port: give a number from 0 to 65535.");
        }
    }
}

TEST_F(ProgramOptions, Refuse_what_they_do_not_know_and_point_to_the_help)
{
    using testing::AllOf;
    using testing::HasSubstr;
    EXPECT_THAT(errorOf({"--bogus"}), AllOf(HasSubstr("bogus"), HasSubstr("See --help.")));
    EXPECT_THAT(errorOf({"--stay=1"}), AllOf(HasSubstr("stay"), HasSubstr("See --help.")));
    EXPECT_THAT(errorOf({"--port"}), AllOf(HasSubstr("--port"), HasSubstr("See --help.")));
    EXPECT_EQ(errorOf({"shop.toml"}), "Unexpected argument \"shop.toml\". See --help.");
    EXPECT_EQ(errorOf({"--stay", "--", "--port"}), "Unexpected argument \"--port\". See --help.");
}

TEST_F(ProgramOptions, Print_a_help_that_names_them_all)
{
    bool goesOn = true;
    const QByteArray text = support::outputOf(stdout, [&] { goesOn = parse({"--help"}); });
    EXPECT_FALSE(goesOn);
    for (const auto *part : {"A till for tests.", "--port <PORT>", "Where to listen.", "--stay",
                             "Go on.", "--help", "--version", "--debug"})
        EXPECT_TRUE(text.contains(part)) << part;
}

TEST_F(ProgramOptions, Print_the_programs_name_and_version)
{
    bool goesOn = true;
    const QByteArray text = support::outputOf(stdout, [&] { goesOn = parse({"--version"}); });
    EXPECT_FALSE(goesOn);
    EXPECT_TRUE(QRegularExpression("^till \\d+\\.\\d+\\.\\d+\n$").match(QString(text)).hasMatch())
        << text.toStdString();
}
