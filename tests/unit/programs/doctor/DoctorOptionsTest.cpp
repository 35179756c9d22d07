#include <doctor/DoctorOptions.h>

#include <common/UsageError.h>

#include <support/OutputCapture.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

using namespace doctor;

namespace {

std::optional<DoctorOptions> parse(QStringList arguments)
{
    arguments.prepend("viewconnector-doctor");
    return DoctorOptions::parse(arguments, "default.so");
}

std::string errorOf(const QStringList &arguments)
{
    try {
        parse(arguments);
    } catch (const UsageError &error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(DoctorOptions, Have_defaults)
{
    const auto options = parse({"--config", "shop.toml"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->configFile, "shop.toml");
    EXPECT_EQ(options->pluginFile, "default.so");
    EXPECT_EQ(options->imagesFolder, "");
    EXPECT_FALSE(options->json);
    EXPECT_EQ(options->bundleFile, "");
    EXPECT_FALSE(options->language);
    EXPECT_FALSE(options->debug);
}

TEST(DoctorOptions, Are_all_taken)
{
    const auto options = parse({"--config", "c", "--plugin", "p", "--images", "i", "--json",
                                "--bundle", "b", "--language", "en", "--debug"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->pluginFile, "p");
    EXPECT_EQ(options->imagesFolder, "i");
    EXPECT_TRUE(options->json);
    EXPECT_EQ(options->bundleFile, "b");
    EXPECT_EQ(options->language, Language::English);
    EXPECT_TRUE(options->debug);
    EXPECT_EQ(parse({"--config", "c", "--language", "ru"})->language, Language::Russian);
}

TEST(DoctorOptions, Need_a_config_and_a_known_language)
{
    EXPECT_EQ(errorOf({}), "--config is missing: give the register's settings file, for example "
                           "--config /etc/viewconnector/shop.toml.");
    EXPECT_EQ(errorOf({"--config", "c", "--language", "de"}),
              "--language \"de\" is unknown: give ru or en.");
}

TEST(DoctorOptions, Are_none_when_a_text_was_asked_for)
{
    std::optional<DoctorOptions> options;
    const auto output = support::outputOf(stdout, [&] { options = parse({"--help"}); });
    EXPECT_FALSE(options);
    EXPECT_TRUE(output.contains("--bundle"));
}
