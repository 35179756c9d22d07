#include <HttpRefusals.h>
#include <support/LogCapture.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

using Kind = HttpRefusals::Kind;
using namespace std::chrono_literals;

class Refusals : public testing::Test
{
protected:
    QStringList logged() const { return log.textsOf(QStringLiteral("httpserver")); }

    support::LogCapture log;
    HttpRefusals refusals;
    const HttpRefusals::Clock::time_point begin = HttpRefusals::Clock::now();
};

} // namespace

TEST_F(Refusals, Are_told_to_the_log_once_a_minute_with_the_number_left_out)
{
    refusals.note(Kind::Syntax, QStringLiteral("a"), begin);
    refusals.note(Kind::Syntax, QStringLiteral("b"), begin);
    refusals.note(Kind::Syntax, QStringLiteral("c"), begin + 59s);
    EXPECT_EQ(logged(), QStringList{QStringLiteral("HTTP-сервер: a")});
    refusals.note(Kind::Syntax, QStringLiteral("d"), begin + 60s);
    ASSERT_EQ(logged().size(), 2);
    EXPECT_EQ(logged().last(), QStringLiteral("HTTP-сервер: d; не записано таких же: 2"));
    refusals.note(Kind::Syntax, QStringLiteral("e"), begin + 120s);
    EXPECT_EQ(logged().last(), QStringLiteral("HTTP-сервер: e"));
    EXPECT_EQ(log.lines().last().level, QtWarningMsg);
    refusals.note(Kind::Syntax, QStringLiteral("f"), begin + 130s);
    refusals.note(Kind::Syntax, QStringLiteral("g"), begin + 180s);
    EXPECT_EQ(logged().last(), QStringLiteral("HTTP-сервер: g; не записано таких же: 1"));
}

TEST_F(Refusals, Of_one_kind_do_not_hide_those_of_another)
{
    for (const auto kind : {Kind::Syntax, Kind::Size, Kind::Guard, Kind::Deadline, Kind::Room})
        refusals.note(kind, QStringLiteral("x"), begin);
    EXPECT_EQ(logged().size(), 5);
}

TEST_F(Refusals, Show_the_beginning_of_the_path_in_harmless_characters)
{
    refusals.noteRequest(Kind::Syntax, QStringLiteral("/a?b=\x1b[31m\n") + QString(9999, u'x'),
                         QStringLiteral("why"));
    const auto line = logged().last();
    EXPECT_TRUE(line.startsWith(QStringLiteral("HTTP-сервер: запрос /a?b=%1B%5B31m%0Axxx")));
    EXPECT_TRUE(line.endsWith(QStringLiteral(" отклонён: why")));
    EXPECT_LT(line.size(), 400);
}
