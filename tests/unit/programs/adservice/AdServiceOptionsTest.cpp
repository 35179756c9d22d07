#include <adservice/AdServiceOptions.h>

#include <common/UsageError.h>

#include <support/OutputCapture.h>
#include <support/PrintQt.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

std::optional<AdServiceOptions> parse(const QStringList &arguments)
{
    return AdServiceOptions::parse(QStringList("adservice") + arguments);
}

std::string errorOf(const QString &argument)
{
    try {
        parse({argument});
    } catch (const UsageError &error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST(AdServiceOptions, Have_a_stream_without_end_unless_told_otherwise)
{
    const auto options = parse({});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->port, 38083);
    EXPECT_EQ(options->listen, "");
    EXPECT_EQ(options->stream, 1);
    EXPECT_EQ(options->adsFolder, "");
    EXPECT_EQ(options->frameTime, 200ms);
    EXPECT_EQ(options->streamTime, 0s);
    EXPECT_EQ(options->answerAfter, 0ms);
    EXPECT_EQ(options->fault, Fault::None);
    EXPECT_FALSE(options->debug);
}

TEST(AdServiceOptions, Have_another_key_for_each_run_unless_told_otherwise)
{
    const auto first = parse({});
    const auto second = parse({});
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->key.size(), 32);
    EXPECT_NE(first->key, second->key);
}

TEST(AdServiceOptions, Are_all_read)
{
    const QTemporaryDir folder;
    const auto options =
        parse({"--port", "0", "--listen", "ads.example:99", "--stream", "3", "--key", "a key",
               "--ads", folder.path(), "--frame-ms", "40", "--stream-seconds", "5",
               "--answer-after", "700", "--fault", "iv-20", "--debug"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->port, 0);
    EXPECT_EQ(options->listen, "ads.example:99");
    EXPECT_EQ(options->stream, 3);
    EXPECT_EQ(options->key, "a key");
    EXPECT_EQ(options->adsFolder, folder.path());
    EXPECT_EQ(options->frameTime, 40ms);
    EXPECT_EQ(options->streamTime, 5s);
    EXPECT_EQ(options->answerAfter, 700ms);
    EXPECT_EQ(options->fault, Fault::Iv20);
    EXPECT_TRUE(options->debug);
}

TEST(AdServiceOptions, Refuse_a_number_that_does_not_fit_and_name_the_ones_that_do)
{
    const std::pair<const char *, const char *> ranges[] = {
        {"stream", "0 to 2147483647"},
        {"frame-ms", "1 to 3600000"},
        {"stream-seconds", "0 to 86400"},
        {"answer-after", "0 to 3600000"},
    };
    for (const auto &[option, range] : ranges)
        for (const auto *value : {"", "x", "-1", "2.5", "2147483648"})
            EXPECT_EQ(errorOf(QString("--%1=%2").arg(option, value)),
                      std::string("--") + option + " \"" + value +
                          "\" does not fit: give a number from " + range + ".");
    EXPECT_NE(errorOf("--frame-ms=0"), "");
    EXPECT_NE(errorOf("--frame-ms=3600001"), "");
    EXPECT_NE(errorOf("--stream-seconds=86401"), "");
    EXPECT_EQ(errorOf("--port=x"), "--port \"x\" is no port: give a number from 0 to 65535.");
}

TEST(AdServiceOptions, Refuse_an_address_that_is_none)
{
    for (const auto *address : {"", "38083", "127.0.0.1", "127.0.0.1:0", "127.0.0.1:x",
                                "127.0.0.1:70000", "http://127.0.0.1:80", "127.0.0.1:80/path"})
        EXPECT_EQ(errorOf(QString("--listen=%1").arg(address)),
                  std::string("--listen \"") + address +
                      "\" is no address: give one like 127.0.0.1:38083.");
}

TEST(AdServiceOptions, Refuse_a_folder_that_is_none)
{
    for (const auto *folder : {"", "/none", "/dev/null"})
        EXPECT_EQ(errorOf(QString("--ads=%1").arg(folder)),
                  std::string("--ads \"") + folder +
                      "\" is no folder that can be read: give one like demo/ads.");
}

TEST(AdServiceOptions, Refuse_an_empty_key)
{
    EXPECT_EQ(errorOf("--key="),
              "--key is empty: give a text, or leave the option out for a random one.");
}

TEST(AdServiceOptions, Refuse_an_unknown_fault_and_name_the_known_ones)
{
    const auto error = QString::fromStdString(errorOf("--fault=sulking"));
    EXPECT_TRUE(error.startsWith("--fault \"sulking\" is unknown: give one of refuse, status, "))
        << error.toStdString();
    EXPECT_TRUE(error.endsWith(", no-answer.")) << error.toStdString();
}

TEST(AdServiceOptions, Are_empty_when_only_a_text_was_asked_for)
{
    for (const auto *option : {"--help", "--version"}) {
        bool empty = false;
        const auto text = support::outputOf(stdout, [&] { empty = !parse({option}); });
        EXPECT_TRUE(empty) << option;
        EXPECT_FALSE(text.isEmpty()) << option;
    }
}
