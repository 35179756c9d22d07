#include <display/DisplayOptions.h>

#include <common/UsageError.h>

#include <support/OutputCapture.h>
#include <support/PrintQt.h>

#include <QDir>

#include <gtest/gtest.h>

namespace {

std::optional<DisplayOptions> parse(const QStringList &arguments)
{
    return DisplayOptions::parse(QStringList("display") + arguments);
}

std::string errorOf(const QStringList &arguments)
{
    try {
        parse(arguments);
    } catch (const UsageError &error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST(DisplayOptions, Have_the_sample_shops_addresses_unless_told_otherwise)
{
    const auto options = parse({});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->port, 38080);
    EXPECT_EQ(options->pluginUrl, QUrl("http://127.0.0.1:38081"));
    EXPECT_FALSE(options->pagePort);
    EXPECT_EQ(options->recordFile, "");
    EXPECT_EQ(options->switches.toJson(),
              (QJsonObject{{"down", false}, {"error", false}, {"slowMs", 0}}));
    EXPECT_FALSE(options->debug);
}

TEST(DisplayOptions, Keep_the_last_state_in_a_file_of_the_users_for_each_port)
{
    qunsetenv("XDG_STATE_HOME");
    EXPECT_EQ(parse({"--port", "5"})->stateFile,
              QDir::homePath() + "/.local/state/viewconnector/display-5.jsonl");
    qputenv("XDG_STATE_HOME", "/somewhere");
    EXPECT_EQ(parse({})->stateFile, "/somewhere/viewconnector/display-38080.jsonl");
    EXPECT_EQ(parse({"--state", "here"})->stateFile, "here");
    EXPECT_EQ(parse({"--state", ""})->stateFile, "");
    EXPECT_EQ(parse({"--port", "0"})->stateFile, "") << "another port each time";
    qunsetenv("XDG_STATE_HOME");
}

TEST(DisplayOptions, Refuse_a_slowness_that_is_none)
{
    for (const auto *slowness : {"", "-1", "600001", "much"})
        EXPECT_EQ(errorOf({QString("--slow=%1").arg(slowness)}),
                  std::string("--slow \"") + slowness +
                      "\" does not fit: give a number from 0 to 600000.");
}

TEST(DisplayOptions, Are_all_read)
{
    const auto options =
        parse({"--port", "0", "--plugin-url", "http://till.example:99", "--record", "r.jsonl",
               "--page", "81", "--down", "--error", "--slow", "5", "--debug"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->port, 0);
    EXPECT_EQ(options->pluginUrl, QUrl("http://till.example:99"));
    EXPECT_EQ(options->recordFile, "r.jsonl");
    EXPECT_EQ(options->pagePort, 81);
    EXPECT_EQ(options->switches.toJson(),
              (QJsonObject{{"down", true}, {"error", true}, {"slowMs", 5}}));
    EXPECT_TRUE(options->debug);
}

TEST(DisplayOptions, Refuse_an_address_that_cannot_be_asked)
{
    for (const auto *address :
         {"", "127.0.0.1:38081", "https://127.0.0.1", "http://", "file:///tmp", "38081"})
        EXPECT_EQ(errorOf({QString("--plugin-url=%1").arg(address)}),
                  std::string("--plugin-url \"") + address +
                      "\" is no address: give one like http://127.0.0.1:38081.");
}

TEST(DisplayOptions, Refuse_a_port_that_is_none)
{
    EXPECT_EQ(errorOf({"--port", "x"}), "--port \"x\" is no port: give a number from 0 to 65535.");
}

TEST(DisplayOptions, Are_empty_when_only_a_text_was_asked_for)
{
    for (const auto *option : {"--help", "--version"}) {
        bool empty = false;
        const auto text = support::outputOf(stdout, [&] { empty = !parse({option}); });
        EXPECT_TRUE(empty) << option;
        EXPECT_FALSE(text.isEmpty()) << option;
    }
}
