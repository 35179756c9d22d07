#include <common/EventLine.h>

#include <support/OutputCapture.h>

#include <gmock/gmock.h>

#include <thread>
#include <vector>

TEST(EventLine, Has_the_time_what_it_is_about_and_what_happened)
{
    const auto line = support::outputOf(stdout, [] { printEvent("Stream", "начат"); });
    EXPECT_THAT(
        line.toStdString(),
        testing::MatchesRegex("[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}  Stream          начат\n"));
}

TEST(EventLine, Does_not_mix_with_those_of_other_threads)
{
    constexpr int threadCount = 4;
    constexpr int lineCount = 200;
    const QString text(100, u'x');
    const auto lines = support::outputOf(stdout, [&] {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([&] {
                for (int line = 0; line < lineCount; ++line)
                    printEvent("Stream", text);
            });
    });
    EXPECT_EQ(lines.count('\n'), threadCount * lineCount);
    EXPECT_EQ(lines.count(("Stream          " + text + "\n").toUtf8()), threadCount * lineCount);
}
