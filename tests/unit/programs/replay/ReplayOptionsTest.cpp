#include <replay/ReplayOptions.h>

#include <common/UsageError.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

std::optional<ReplayOptions> parse(const QStringList &arguments)
{
    return ReplayOptions::parse(QStringList("viewconnector-replay") + arguments);
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

TEST(ReplayOptions, Play_as_recorded_at_the_sample_shops_display_unless_told_otherwise)
{
    const auto options = parse({"--recording", "file"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->recording, "file");
    EXPECT_EQ(options->displayUrl, QUrl("http://127.0.0.1:38080"));
    EXPECT_EQ(options->speed, 1);
    EXPECT_FALSE(options->json);
}

TEST(ReplayOptions, Take_everything_from_the_command_line)
{
    const auto options = parse({"--recording", "file", "--display", "http://till:1", "--speed",
                                "2.5", "--json", "--debug"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->displayUrl, QUrl("http://till:1"));
    EXPECT_EQ(options->speed, 2.5);
    EXPECT_TRUE(options->json);
    EXPECT_TRUE(options->debug);
    EXPECT_EQ(parse({"--recording", "file", "--speed", "0"})->speed, 0);
}

TEST(ReplayOptions, Need_a_recording)
{
    EXPECT_EQ(errorOf({}), "--recording is missing. See --help.");
}

TEST(ReplayOptions, Refuse_a_speed_that_is_none)
{
    for (const auto *speed : {"", "fast", "-1", "nan", "inf", "0.0001", "1e7"})
        EXPECT_EQ(errorOf({"--recording", "file", QString("--speed=%1").arg(speed)}),
                  QString("--speed \"%1\" does not fit: give 0, or a number from 0.001 to 1000000.")
                      .arg(speed)
                      .toStdString());
}
