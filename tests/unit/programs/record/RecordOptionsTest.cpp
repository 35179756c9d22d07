#include <record/RecordOptions.h>

#include <common/UsageError.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

std::optional<RecordOptions> parse(const QStringList &arguments)
{
    return RecordOptions::parse(QStringList("viewconnector-record") + arguments);
}

} // namespace

TEST(RecordOptions, Stand_between_the_sample_shops_addresses_unless_told_otherwise)
{
    const auto options = parse({});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->displayUrl, QUrl("http://127.0.0.1:38080"));
    EXPECT_EQ(options->port, 38090);
    EXPECT_EQ(options->pluginUrl, QUrl("http://127.0.0.1:38081"));
    EXPECT_EQ(options->pluginPort, 38091);
    EXPECT_EQ(options->output, "-");
    EXPECT_TRUE(options->redacts);
    EXPECT_FALSE(options->debug);
}

TEST(RecordOptions, Take_everything_from_the_command_line)
{
    const auto options =
        parse({"--display", "http://till:1", "--port", "2", "--plugin-url", "http://till:3",
               "--plugin-port", "0", "--output", "file", "--unredacted", "--debug"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->displayUrl, QUrl("http://till:1"));
    EXPECT_EQ(options->port, 2);
    EXPECT_EQ(options->pluginUrl, QUrl("http://till:3"));
    EXPECT_EQ(options->pluginPort, 0);
    EXPECT_EQ(options->output, "file");
    EXPECT_FALSE(options->redacts);
    EXPECT_TRUE(options->debug);
}

TEST(RecordOptions, Refuse_what_is_no_address_or_port)
{
    for (const auto *option :
         {"--display=38080", "--plugin-url=https://till", "--port=none", "--plugin-port=65536"})
        EXPECT_THROW(parse({option}), UsageError) << option;
}
