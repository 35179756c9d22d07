#include <support/OutputCapture.h>
#include <support/PrintQt.h>

#include <QTextStream>

#include <gtest/gtest.h>

#include <unistd.h>

TEST(OutputCapture, Gives_what_was_written_and_nothing_from_before_or_after)
{
    const QByteArray all = support::outputOf(stdout, [] {
        std::fputs("before, ", stdout);
        const QByteArray inner = support::outputOf(stdout, [] { std::fputs("within", stdout); });
        std::fputs("after", stdout);
        EXPECT_EQ(inner, "within");
    });
    EXPECT_EQ(all, "before, after");
}

TEST(OutputCapture, Catches_every_way_to_write_and_only_the_stream_it_was_given)
{
    QByteArray toStdout;
    const QByteArray toStderr = support::outputOf(stderr, [&] {
        toStdout = support::outputOf(stdout, [] {
            QTextStream(stdout) << "a ";
            std::fflush(stdout);
            [[maybe_unused]] const auto written = write(STDOUT_FILENO, "b", 1);
            std::fputs("c", stderr);
        });
    });
    EXPECT_EQ(toStdout, "a b");
    EXPECT_EQ(toStderr, "c");
}
