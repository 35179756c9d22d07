#include "AvailabilityLog.h"

#include <log4qt/logmanager.h>
#include <support/LogCapture.h>
#include <support/PrintQt.h>

#include <QElapsedTimer>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

namespace {

using testing::EndsWith;
using testing::MatchesRegex;
using testing::StartsWith;

const auto loggerName = QStringLiteral("availability.test");

class Availability : public testing::Test
{
protected:
    Availability()
    {
        log.setLogger(Log4Qt::LogManager::logger(loggerName));
        log.setServer(QStringLiteral("Дисплей"));
    }

    std::string text(qsizetype line) const { return captured.lines().at(line).text.toStdString(); }
    qsizetype lineCount() const { return captured.lines().size(); }

    support::LogCapture captured;
    AvailabilityLog log;
};

} // namespace

TEST_F(Availability, Is_silent_while_all_is_well)
{
    for (int i = 0; i < 3; ++i)
        log.succeeded();
    EXPECT_EQ(lineCount(), 0);
}

TEST_F(Availability, Tells_once_that_the_server_is_gone_and_why)
{
    log.failed(QStringLiteral("первая причина"));
    for (int i = 0; i < 1000; ++i)
        log.failed(QStringLiteral("другая причина"));
    ASSERT_EQ(lineCount(), 1);
    EXPECT_EQ(captured.lines().first().level, QtCriticalMsg);
    EXPECT_EQ(captured.lines().first().logger, loggerName);
    EXPECT_THAT(text(0), StartsWith("Дисплей"));
    EXPECT_THAT(text(0), EndsWith("первая причина"));
}

TEST_F(Availability, Tells_once_that_the_server_is_back_and_what_was_missed)
{
    for (int i = 0; i < 12; ++i)
        log.failed(QStringLiteral("причина"));
    log.succeeded();
    log.succeeded();
    ASSERT_EQ(lineCount(), 2);
    EXPECT_EQ(captured.lines().last().level, QtInfoMsg);
    EXPECT_THAT(text(1), MatchesRegex("Дисплей: .* [0-9]+\\.[0-9] .*: 12"));
}

TEST_F(Availability, Tells_in_seconds_how_long_the_server_was_gone)
{
    QElapsedTimer timer;
    timer.start();
    log.failed(QStringLiteral("причина"));
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    log.succeeded();
    const auto told = QRegularExpression("через ([0-9.]+) с").match(captured.lines().last().text);
    EXPECT_GE(told.captured(1).toDouble(), 0.1);
    EXPECT_LE(told.captured(1).toDouble(), static_cast<double>(timer.elapsed()) / 1000 + 0.1);
}

TEST_F(Availability, Begins_anew_with_each_failure_after_a_success)
{
    log.failed(QStringLiteral("a"));
    log.succeeded();
    log.failed(QStringLiteral("b"));
    log.succeeded();
    ASSERT_EQ(lineCount(), 4);
    EXPECT_THAT(text(2), EndsWith("b"));
    EXPECT_THAT(text(3), EndsWith(": 1"));
}

TEST_F(Availability, Logs_nothing_without_a_logger)
{
    log.setLogger(nullptr);
    log.failed(QStringLiteral("причина"));
    log.succeeded();
    EXPECT_EQ(lineCount(), 0);
}
