// The subscription to an ad service: how much of an answer is taken.

#include "AdsStreamFixture.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QThread>
#include <QTimer>

#include <array>

namespace {

using namespace std::chrono_literals;
using support::AdAnswer;
using support::ScriptedAnswer;

const QStringList givenUp{"Ошибка подключения к сервису Ads: Operation canceled",
                          "Пустой ответ от сервера"};

constexpr qsizetype maxAnswerBytes = 16'384;
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

TEST_F(AdsStreamLimits, An_answer_of_16_KiB_is_taken)
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

TEST_F(AdsStreamLimits,
       An_address_that_Qt_is_slow_to_read_holds_the_register_for_no_more_than_a_moment)
{
    const auto marks = QByteArrayLiteral("\u0301\u0323").repeated(4'000);
    answer({.plaintext = R"({"listen":"a)" + marks + R"(","stream":3,"master":"K"})"});
    QElapsedTimer timer;
    timer.start();
    subscribe(1);
    EXPECT_LT(timer.elapsed(), 5000); // minutes for a megabyte
}

TEST_F(AdsStreamLimits, An_answer_without_an_end_is_given_up_as_an_error)
{
    service.answer(ScriptedAnswer::endlessBody());
    EXPECT_EQ(subscribe(2), givenUp);
    EXPECT_TRUE(connector->adTimetable.isEmpty());
    EXPECT_LT(service.bytesSent(), heldBytes);
}

TEST_F(AdsStreamLimits, An_answer_without_an_end_that_holds_nothing_is_given_up_as_an_error)
{
    const auto gzipHead = QByteArray::fromHex("1f8b08000000000000ff");
    const auto emptyBlocks = QByteArray::fromHex("000000ffff").repeated(1000);
    service.answer({.bytes = "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\n\r\n" + gzipHead,
                    .repeated = emptyBlocks});
    EXPECT_EQ(subscribe(2), givenUp);
    EXPECT_LT(service.bytesSent(), heldBytes);
}

class BusyRegister : public AdsStreamFixture
{
protected:
    /// The register has no time for its events once that many requests have gone out.
    void expectNotReadAhead(int requests)
    {
        const auto requestsBefore = service.requestCount();
        const auto bytesBefore = service.bytesSent();
        const auto linesBefore = log.lines().size();
        connector->asyncGetAdsStream(service.url());
        ASSERT_TRUE(
            support::waitFor([&] { return service.requestCount() == requestsBefore + requests; }));
        QThread::msleep(300);
        EXPECT_LT(service.bytesSent() - bytesBefore, heldBytes / 2);
        EXPECT_TRUE(support::waitFor([&] { return log.lines().size() == linesBefore + 2; }));
    }
};

TEST_F(BusyRegister, Has_no_answer_without_an_end_read_ahead)
{
    service.answer(ScriptedAnswer::endlessBody());
    expectNotReadAhead(1);
}

TEST_F(BusyRegister, Has_none_behind_a_redirection_read_ahead_either)
{
    service.answer(ScriptedAnswer::endlessBody());
    for (int time = 0; time < 8; ++time) { // without a limit Qt reads ahead in half of them
        service.answerNext({ScriptedAnswer::status(307)});
        expectNotReadAhead(2);
    }
}

/// Finds the reply by what Qt's network thread tells it.
class ReplyWatch : public QObject
{
public:
    ReplyWatch() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *object, QEvent * /*event*/) override
    {
        if (auto *found = qobject_cast<QNetworkReply *>(object))
            reply = found;
        return false;
    }
    QPointer<QNetworkReply> reply;
};

TEST_F(AdsStreamLimits, An_answer_that_takes_longer_than_15_seconds_is_given_up_as_an_error)
{
    const ReplyWatch watch;
    service.answer(ScriptedAnswer::dripping(100ms));
    connector->asyncGetAdsStream(service.url());
    ASSERT_TRUE(support::waitFor([&] { return watch.reply && watch.reply->bytesAvailable() > 0; }));
    auto *const deadline = watch.reply->findChild<QTimer *>();
    ASSERT_TRUE(deadline);
    EXPECT_TRUE(deadline->isActive());
    EXPECT_EQ(deadline->interval(), 15'000);
    deadline->start(0);
    EXPECT_TRUE(support::waitFor([&] { return log.lines().size() == 2; }));
    EXPECT_EQ(log.textsOf("viewconnector"), givenUp);
}

class EndlessAdsHeader : public AdsStreamFixture
{
protected:
    void subscribeAndTakeBytes(const ScriptedAnswer &header)
    {
        service.answer(header);
        const auto before = service.bytesSent();
        connector->asyncGetAdsStream(service.url());
        ASSERT_TRUE(support::waitFor([&] { return service.bytesSent() > before; }));
    }

    const std::array<ScriptedAnswer, 2> headers{ScriptedAnswer::endlessHeader(),
                                                ScriptedAnswer::endlessInterim(0ms)};
};

// Qt waits for its network thread where the last of a reply goes, five seconds at most.
TEST_F(EndlessAdsHeader, Can_be_given_up_as_at_the_time_out)
{
    for (const auto &header : headers) {
        const ReplyWatch watch;
        const auto before = log.textsOf("viewconnector").size();
        subscribeAndTakeBytes(header);
        ASSERT_TRUE(watch.reply);
        const QPointer network = watch.reply->manager();
        QElapsedTimer timer;
        timer.start();
        watch.reply->abort();
        EXPECT_TRUE(support::waitFor([&] { return network.isNull(); }));
        EXPECT_LT(timer.elapsed(), 3000);
        EXPECT_EQ(log.textsOf("viewconnector").mid(before), givenUp);
    }
}

TEST_F(EndlessAdsHeader, Does_not_delay_the_end_of_the_plugin)
{
    for (const auto &header : headers) {
        connector = std::make_unique<RecordingConnector>();
        subscribeAndTakeBytes(header);
        QElapsedTimer timer;
        timer.start();
        connector.reset();
        EXPECT_LT(timer.elapsed(), 3000);
    }
}

} // namespace
