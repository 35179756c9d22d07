#include <common/Logging.h>

#include <support/OutputCapture.h>
#include <support/PrintQt.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QDateTime>
#include <QLoggingCategory>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

const QRegularExpression linePattern(
    QRegularExpression::anchoredPattern("(\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}) "
                                        "([A-Z]+) (\\S+) (.*)\n"));

class Logging : public testing::Test
{
protected:
    ~Logging() override
    {
        qInstallMessageHandler(nullptr);
        QLoggingCategory::setFilterRules({});
    }

    static QByteArray logged(void (Log4Qt::Logger::*level)(const QString &) const,
                             const QString &text = "a text")
    {
        return support::outputOf(stderr,
                                 [&] { (Log4Qt::LogManager::logger("shop.till")->*level)(text); });
    }

    static QRegularExpressionMatch parsed(const QByteArray &line)
    {
        return linePattern.match(QString::fromUtf8(line));
    }
};

} // namespace

TEST_F(Logging, Writes_time_level_logger_and_message_for_every_level)
{
    logToStandardError(true);
    const struct
    {
        void (Log4Qt::Logger::*level)(const QString &) const;
        const char *name;
    } levels[] = {{&Log4Qt::Logger::debug, "DEBUG"},
                  {&Log4Qt::Logger::info, "INFO"},
                  {&Log4Qt::Logger::warn, "WARN"},
                  {&Log4Qt::Logger::error, "ERROR"}};
    for (const auto &[level, name] : levels) {
        SCOPED_TRACE(name);
        const auto line = parsed(logged(level));
        ASSERT_TRUE(line.hasMatch());
        EXPECT_EQ(line.captured(2), name);
        EXPECT_EQ(line.captured(3), "shop.till");
        EXPECT_EQ(line.captured(4), "a text");
    }
}

TEST_F(Logging, Tells_the_time_of_the_line)
{
    logToStandardError(false);
    const auto before = QDateTime::currentDateTime();
    const auto line = parsed(logged(&Log4Qt::Logger::info));
    const auto time = QDateTime::fromString(line.captured(1), Qt::ISODateWithMs);
    ASSERT_TRUE(time.isValid());
    EXPECT_LE(std::abs(before.msecsTo(time)), 10'000);
}

TEST_F(Logging, Leaves_lines_of_level_DEBUG_out_unless_asked_for)
{
    logToStandardError(false);
    EXPECT_TRUE(logged(&Log4Qt::Logger::debug).isEmpty());
    EXPECT_FALSE(logged(&Log4Qt::Logger::info).isEmpty());
}

TEST_F(Logging, Never_shows_the_libraries_own_lines_of_level_DEBUG)
{
    logToStandardError(true);
    const QLoggingCategory category("qt.some.library");
    EXPECT_FALSE(category.isDebugEnabled());
    EXPECT_TRUE(category.isWarningEnabled());
}

TEST_F(Logging, Writes_UTF_8_and_leaves_quotes_as_they_are)
{
    logToStandardError(false);
    const auto line =
        parsed(logged(&Log4Qt::Logger::info, "адрес: \"http://касса\" — 1 ₽"));
    EXPECT_EQ(line.captured(4), "адрес: \"http://касса\" — 1 ₽");
}

TEST_F(Logging, Keeps_a_message_on_its_line_whatever_others_have_put_into_it)
{
    logToStandardError(false);
    const auto line = parsed(logged(&Log4Qt::Logger::info, "a\r\nb\x1b[31mc\td\x7f\u0085"));
    EXPECT_EQ(line.captured(4), "a  b [31mc d  ");
}

TEST_F(Logging, Cuts_a_message_after_4000_characters)
{
    logToStandardError(false);
    const QString longest(4000, u'я');
    EXPECT_EQ(parsed(logged(&Log4Qt::Logger::info, longest)).captured(4), longest);
    EXPECT_EQ(parsed(logged(&Log4Qt::Logger::info, longest + u'я')).captured(4), longest + u'…');
}

TEST_F(Logging, Does_not_mix_the_lines_of_several_threads)
{
    logToStandardError(false);
    constexpr int threadCount = 4;
    constexpr int lineCount = 200;
    const QString text(300, u'x');
    const QByteArray all = support::outputOf(stderr, [&] {
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i)
            threads.emplace_back([&] {
                for (int n = 0; n < lineCount; ++n)
                    Log4Qt::LogManager::logger("shop")->info(text);
            });
        for (auto &thread : threads)
            thread.join();
    });

    auto lines = all.split('\n');
    EXPECT_TRUE(lines.takeLast().isEmpty());
    EXPECT_EQ(lines.size(), threadCount * lineCount);
    for (const auto &line : lines)
        ASSERT_EQ(parsed(line + '\n').captured(4), text);
}
