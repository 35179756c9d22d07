#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <support/LogCapture.h>
#include <support/PrintQt.h>

#include <QLoggingCategory>

#include <gtest/gtest.h>

namespace {

const auto name = QStringLiteral("viewconnector.test");

class Loggers : public testing::Test
{
protected:
    Loggers() { QLoggingCategory::setFilterRules(QStringLiteral("*=true")); }
    ~Loggers() override { QLoggingCategory::setFilterRules(QString()); }

    void logAtEachLevel() const
    {
        logger->debug(QStringLiteral("d"));
        logger->info(QStringLiteral("i"));
        logger->warn(QStringLiteral("w"));
        logger->error(QStringLiteral("e"));
    }

    const Log4Qt::Logger *logger = Log4Qt::LogManager::logger(name);
    support::LogCapture log;
};

} // namespace

TEST_F(Loggers, Write_each_level_to_the_category_of_their_name)
{
    logAtEachLevel();
    const auto lines = log.lines();
    ASSERT_EQ(lines.size(), 4);
    const QtMsgType levels[] = {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg};
    for (qsizetype i = 0; i < 4; ++i) {
        EXPECT_EQ(lines[i].level, levels[i]);
        EXPECT_EQ(lines[i].logger, name);
    }
    EXPECT_EQ(log.textsOf(name), QStringLiteral("d i w e").split(u' '));
}

TEST_F(Loggers, Write_a_text_as_it_is)
{
    const auto text = QStringLiteral("ответ \"%1\" \\ 100 % \t строка");
    logger->info(text);
    EXPECT_EQ(log.textsOf(name), QStringList{text});
}

TEST_F(Loggers, Drop_a_line_whose_level_is_off)
{
    const struct
    {
        const char *level;
        const char *left;
    } rows[] = {{"debug", "i w e"}, {"info", "d w e"}, {"warning", "d i e"}, {"critical", "d i w"}};
    for (const auto &[level, left] : rows) {
        SCOPED_TRACE(level);
        QLoggingCategory::setFilterRules(
            QStringLiteral("*=true\n%1.%2=false").arg(name, QLatin1String(level)));
        const auto before = log.textsOf(name).size();
        logAtEachLevel();
        EXPECT_EQ(log.textsOf(name).mid(before), QString::fromUtf8(left).split(u' '));
    }
}

TEST_F(Loggers, Tell_which_levels_are_on)
{
    EXPECT_TRUE(logger->isDebugEnabled() && logger->isInfoEnabled() && logger->isWarnEnabled() &&
                logger->isErrorEnabled());
    QLoggingCategory::setFilterRules(QStringLiteral("%1=false").arg(name));
    EXPECT_FALSE(logger->isDebugEnabled());
    EXPECT_FALSE(logger->isInfoEnabled());
    EXPECT_FALSE(logger->isWarnEnabled());
    EXPECT_FALSE(logger->isErrorEnabled());
}

TEST_F(Loggers, Are_not_affected_by_the_rules_of_others)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*=true\nother.debug=false"));
    Log4Qt::LogManager::logger(QStringLiteral("other"))->debug(QStringLiteral("not seen"));
    logger->debug(QStringLiteral("seen"));
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_EQ(log.textsOf(name), QStringList{QStringLiteral("seen")});
}
