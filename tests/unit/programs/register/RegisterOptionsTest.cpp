#include <register/RegisterOptions.h>

#include <common/UsageError.h>

#include <support/OutputCapture.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

std::optional<RegisterOptions> parse(const QStringList &arguments)
{
    return RegisterOptions::parse(QStringList("register") + arguments, "/own/plugin.so");
}

} // namespace

TEST(RegisterOptions, Need_the_settings_only)
{
    const auto options = parse({"--config", "shop.toml"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->configFile, "shop.toml");
    EXPECT_EQ(options->pluginFile, "/own/plugin.so");
    EXPECT_EQ(options->imagesFolder, "");
    EXPECT_EQ(options->commandsFile, "");
    EXPECT_EQ(options->reportFile, "");
    EXPECT_FALSE(options->stay);
    EXPECT_FALSE(options->pagePort);
    EXPECT_TRUE(options->inspector.isEmpty());
    EXPECT_TRUE(options->check.isEmpty());
    EXPECT_FALSE(options->debug);
}

TEST(RegisterOptions, Are_all_read)
{
    const auto options =
        parse({"--stay", "--config", "shop.toml", "--plugin", "other.so", "--images", "pictures",
               "--commands", "-", "--report", "report.json", "--page", "38082", "--inspector",
               "http://127.0.0.1:38080", "--debug"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->pluginFile, "other.so");
    EXPECT_EQ(options->imagesFolder, "pictures");
    EXPECT_EQ(options->commandsFile, "-");
    EXPECT_EQ(options->reportFile, "report.json");
    EXPECT_TRUE(options->stay);
    EXPECT_EQ(options->pagePort, 38082);
    EXPECT_EQ(options->inspector, QUrl("http://127.0.0.1:38080"));
    EXPECT_TRUE(options->debug);
}

TEST(RegisterOptions, Without_settings_are_refused_with_an_example)
{
    try {
        parse({"--stay"});
        ADD_FAILURE() << "no error";
    } catch (const UsageError &error) {
        EXPECT_STREQ(error.what(), "--config is missing: give the settings file, for example "
                                   "--config demo/shop.toml.");
    }
}

TEST(RegisterOptions, May_leave_the_pages_port_to_the_system)
{
    EXPECT_EQ(parse({"--config", "shop.toml", "--page", "0"})->pagePort, 0);
}

TEST(RegisterOptions, Are_refused_with_the_mend_where_they_do_not_fit)
{
    const std::pair<QStringList, const char *> wrong[] = {
        {{"--page", "70000"}, "--page \"70000\" is no port: give a number from 0 to 65535."},
        {{"--inspector", "38080"},
         "--inspector \"38080\" is no address: give one like http://127.0.0.1:38080."},
        {{"--inspector", "ftp://127.0.0.1"},
         "--inspector \"ftp://127.0.0.1\" is no address: give one like http://127.0.0.1:38080."},
    };
    for (const auto &[arguments, text] : wrong) {
        try {
            parse(QStringList{"--config", "shop.toml"} + arguments);
            ADD_FAILURE() << "no error: " << text;
        } catch (const UsageError &error) {
            EXPECT_STREQ(error.what(), text);
        }
    }
}

TEST(RegisterOptions, Are_empty_when_only_a_text_was_asked_for)
{
    for (const auto *option : {"--help", "--version"}) {
        bool empty = false;
        const auto text = support::outputOf(stdout, [&] { empty = !parse({option}); });
        EXPECT_TRUE(empty) << option;
        EXPECT_FALSE(text.isEmpty()) << option;
    }
}

TEST(RegisterOptions, Of_a_check_need_no_settings)
{
    const auto options = parse({"--check", "http://127.0.0.1:5000", "--report", "report.json"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->check, QUrl("http://127.0.0.1:5000"));
    EXPECT_EQ(options->requestPort, 38081);
    EXPECT_EQ(options->reportFile, "report.json");
    EXPECT_EQ(parse({"--check", "http://d", "--request-port", "0"})->requestPort, 0);
}

TEST(RegisterOptions, Of_a_check_go_with_no_shop_of_ones_own)
{
    const QList<QStringList> others{{"--config", "shop.toml"}, {"--images", "pictures"},
                                    {"--commands", "-"},       {"--stay"},
                                    {"--page", "1"},           {"--inspector", "http://d"}};
    for (const auto &other : others) {
        try {
            parse(QStringList{"--check", "http://127.0.0.1:5000"} + other);
            ADD_FAILURE() << "no error for " << other[0].toStdString();
        } catch (const UsageError &error) {
            EXPECT_EQ(QString(error.what()), other[0] + " does not go with --check: leave it out.");
        }
    }
}

TEST(RegisterOptions, Of_a_check_are_for_it_only)
{
    EXPECT_THROW(parse({"--config", "shop.toml", "--request-port", "1"}), UsageError);
    EXPECT_THROW(parse({"--check", "ftp://d"}), UsageError);
}
