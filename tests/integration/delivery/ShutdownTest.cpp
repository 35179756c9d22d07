#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

using namespace std::chrono_literals;
using support::ScriptedAnswer;

namespace {

/// A display that swallows every post, for longer than the plug-in may take to end, and an ad
/// service that never answers.
class Shutdown : public testing::Test
{
protected:
    Shutdown()
    {
        display.answer(ScriptedAnswer::blackHole());
        adService.answer(ScriptedAnswer::blackHole());
        configure(5);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }

    void configure(int postTimeoutSeconds)
    {
        QFile config(configFile);
        ASSERT_TRUE(config.open(QIODevice::WriteOnly));
        config.write(QStringLiteral("[ViewConnector]\nserver = \"%1\"\nport = 0\ntimeout = %2\n"
                                    "[ViewConnector.Ads]\nurl = \"%3\"\n")
                         .arg(display.url({}).toString())
                         .arg(postTimeoutSeconds)
                         .arg(adService.url().toString())
                         .toUtf8());
    }

    void startUntilItPosts(const QString &program, const QStringList &arguments)
    {
        process.start(program, arguments);
        ASSERT_TRUE(process.waitForStarted());
        ASSERT_TRUE(support::waitFor([&] { return display.requestCount() == 1; }));
    }

    /// Writes a line to the process and measures how long it takes to end after it.
    std::chrono::milliseconds end(const QByteArray &line)
    {
        QElapsedTimer timer;
        timer.start();
        process.write(line + '\n');
        process.closeWriteChannel();
        EXPECT_TRUE(support::waitFor([&] { return process.state() == QProcess::NotRunning; }));
        return std::chrono::milliseconds(timer.elapsed());
    }

    support::ScriptedServer display;
    support::ScriptedServer adService;
    QTemporaryDir folder;
    const QString configFile = folder.filePath(QStringLiteral("config.toml"));
    QProcess process;
};

class CarelessHost : public Shutdown, public testing::WithParamInterface<const char *>
{
};

} // namespace

TEST_F(Shutdown, A_register_ends_in_about_a_second_while_a_post_hangs_for_five)
{
    startUntilItPosts(QStringLiteral(REGISTER), {"--config", configFile, "--commands", "-"});
    ASSERT_TRUE(support::waitFor([&] { return adService.requestCount() == 1; }));
    const auto took = end(R"({"do":"quit"})");

    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_GE(took, 900ms); // it did wait for the client thread
    EXPECT_LT(took, 3s);    // but not for the post
}

TEST_P(CarelessHost, Ends_with_its_own_exit_code_while_a_post_hangs)
{
    startUntilItPosts(QStringLiteral(CARELESS_HOST),
                      {GetParam(), QStringLiteral(PLUGIN_FILE), configFile});
    end({});

    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 42);
}

INSTANTIATE_TEST_SUITE_P(Ways, CarelessHost,
                         testing::Values("return-from-main", "exit", "unload-and-go-on",
                                         "drop-the-loader"),
                         [](const testing::TestParamInfo<const char *> &tested) {
                             auto name = std::string(tested.param);
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST_F(Shutdown, A_plugin_that_was_never_initialised_is_unloaded_without_a_trace)
{
    process.start(QStringLiteral(CARELESS_HOST),
                  {"never-initialised", QStringLiteral(PLUGIN_FILE), configFile});
    ASSERT_TRUE(support::waitFor([&] { return process.state() == QProcess::NotRunning; }));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 42); // LeakSanitizer would change it
    EXPECT_EQ(display.requestCount(), 0);
}

TEST(PluginLibrary, Asks_the_loader_never_to_unmap_it)
{
    // Some compilers' symbols keep a library mapped by chance; this does not rest on them.
    QProcess readelf;
    readelf.start(QStringLiteral("readelf"), {"--dynamic", QStringLiteral(PLUGIN_FILE)});
    ASSERT_TRUE(readelf.waitForFinished());
    EXPECT_TRUE(readelf.readAllStandardOutput().contains("NODELETE"));
}

TEST_F(Shutdown, Code_of_the_plugin_stays_mapped_after_it_was_unloaded)
{
    startUntilItPosts(QStringLiteral(CARELESS_HOST),
                      {"unload-and-go-on", QStringLiteral(PLUGIN_FILE), configFile});
    process.write("\n");
    support::letPass(1500ms); // the plug-in object is gone, its thread still posts
    QFile maps(QStringLiteral("/proc/%1/maps").arg(process.processId()));
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    EXPECT_TRUE(maps.readAll().contains("viewconnector.so"));
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 42);
}

TEST_F(Shutdown, A_post_that_outlasts_the_plugin_ends_by_itself_while_the_host_goes_on)
{
    configure(2); // the plug-in is gone after one second, the host ends after three and a half
    startUntilItPosts(QStringLiteral(CARELESS_HOST),
                      {"unload-and-go-on", QStringLiteral(PLUGIN_FILE), configFile});
    end({});

    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 42);
    EXPECT_EQ(display.requestCount(), 1);
}
