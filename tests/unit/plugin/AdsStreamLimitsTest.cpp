// The subscription to an ad service: how much of an answer is taken.

#include "AdsStreamFixture.h"

namespace {

using support::AdAnswer;
using support::ScriptedAnswer;

const QStringList givenUp{"Ошибка подключения к сервису Ads: Operation canceled",
                          "Пустой ответ от сервера"};

constexpr qsizetype maxAnswerBytes = 1'048'576;
/// What may be on its way when the answer is given up: in sockets, and what Qt's network thread has
/// read before it heard of its limit.
constexpr qint64 heldBytes = 64'000'000;

/// An answer whose body, the tag included, is as long as that.
AdAnswer answerOf(qsizetype bodySize)
{
    const QByteArray start = R"({"listen":"host","stream":3,"master":"K","more":")";
    const QByteArray end = R"("})";
    const qsizetype tagSize = 16;
    const QByteArray filling(bodySize - tagSize - start.size() - end.size(), 'x');
    return {.plaintext = start + filling + end};
}

using AdsStreamLimits = AdsStreamFixture;

TEST_F(AdsStreamLimits, An_answer_of_one_MiB_is_taken)
{
    answer(answerOf(maxAnswerBytes));
    EXPECT_EQ(subscribe(2).constFirst(), "Добавляем поток ads://host?stream=3&key=K");
}

TEST_F(AdsStreamLimits, An_answer_of_one_byte_more_is_given_up_as_an_error)
{
    answer(answerOf(maxAnswerBytes + 1));
    EXPECT_EQ(subscribe(2), givenUp);
    EXPECT_TRUE(connector->adTimetable.isEmpty());
}

TEST_F(AdsStreamLimits, An_answer_without_an_end_is_given_up_as_an_error)
{
    service.answer(ScriptedAnswer::endlessBody());
    EXPECT_EQ(subscribe(2), givenUp);
    EXPECT_TRUE(connector->adTimetable.isEmpty());
    EXPECT_LT(service.bytesSent(), heldBytes);
}

} // namespace
