#include <replay/Replay.h>

#include <common/UsageError.h>

#include <support/Json.h>
#include <support/OutputCapture.h>
#include <support/PrintQt.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using support::ScriptedAnswer;

class ReplayTest : public testing::Test
{
protected:
    ReplayTest()
    {
        options.recording = folder.filePath("recording.jsonl");
        options.displayUrl = display.url();
        options.speed = 0;
    }

    /// A recording of messages at these times.
    void record(const QList<int> &times) const
    {
        QFile file(options.recording);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        for (const int ms : times) {
            const auto number = QByteArray::number(ms);
            file.write(R"({"path":"/content","body":{"at":)" + number + R"(},"ms":)" + number +
                       "}\n");
        }
    }

    /// Plays it to its end, and returns what was printed.
    QByteArray play()
    {
        return support::outputOf(stdout, [this] {
            Replay replay(options);
            bool isOver = false;
            QObject::connect(&replay, &Replay::finished, &replay, [&] { isOver = true; });
            replay.start();
            support::waitFor([&] { return isOver; });
            replay.printSummary();
            hasSucceeded = replay.hasSucceeded();
            error = replay.error();
        });
    }

    QList<QByteArray> bodies() const
    {
        QList<QByteArray> bodies;
        for (const auto &request : display.requests())
            bodies.append(request.body);
        return bodies;
    }

    QTemporaryDir folder;
    support::ScriptedServer display;
    ReplayOptions options;
    bool hasSucceeded = false;
    QString error;
};

} // namespace

TEST_F(ReplayTest, Posts_as_a_register_does_and_marks_it_as_a_replay)
{
    record({5});
    play();
    ASSERT_EQ(display.requestCount(), 1);
    const auto request = display.requests().constFirst();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path, "/content");
    EXPECT_EQ(request.body, "{\"at\":5}");
    EXPECT_EQ(request.field("content-type"), "application/json");
    EXPECT_EQ(request.field("accept"), "application/json");
    EXPECT_EQ(request.field("x-replay"), "1");
}

TEST_F(ReplayTest, Keeps_the_times_of_the_recording_and_scales_them)
{
    record({10'000, 12'000, 14'000});
    for (const double speed : {2.0, 8.0}) {
        options.speed = speed;
        const auto start = std::chrono::steady_clock::now(); // the first message may be late
        play();
        const auto last = display.requests().constLast().arrival;
        const auto took = std::chrono::duration<double, std::milli>(last - start).count();
        EXPECT_GE(took, 4000 / speed);
        EXPECT_LT(took, 2 * 4000 / speed + 1000);
    }
}

TEST_F(ReplayTest, Waits_for_no_time_at_speed_0)
{
    record({0, 3'600'000, 7'200'000});
    play();
    EXPECT_EQ(bodies(), (QList<QByteArray>{"{\"at\":0}", "{\"at\":3600000}", "{\"at\":7200000}"}));
    EXPECT_TRUE(hasSucceeded);
}

TEST_F(ReplayTest, Posts_the_next_message_when_the_last_has_its_answer)
{
    display.answer(ScriptedAnswer::slow(50ms));
    record({0, 1, 2});
    play();
    const auto requests = display.requests();
    ASSERT_EQ(requests.size(), 3);
    for (int i = 1; i < 3; ++i)
        EXPECT_GE(requests[i].arrival - requests[i - 1].arrival, 50ms);
}

TEST_F(ReplayTest, Tells_what_became_of_each_and_goes_on)
{
    record({0, 1, 2, 3});
    display.answerNext({ScriptedAnswer::ok(), ScriptedAnswer::status(500), ScriptedAnswer::closed(),
                        ScriptedAnswer::status(204)});
    const auto lines = QString(play()).split('\n');
    ASSERT_EQ(lines.size(), 6);
    EXPECT_TRUE(lines[0].contains("  Content         line 1: accepted in "))
        << lines[0].toStdString();
    EXPECT_TRUE(lines[1].endsWith("  line 2: refused with 500")) << lines[1].toStdString();
    EXPECT_TRUE(lines[2].contains("  line 3: no answer: ")) << lines[2].toStdString();
    EXPECT_TRUE(lines[3].contains("  line 4: accepted in ")) << lines[3].toStdString();
    EXPECT_EQ(lines[4], "Sent 4 messages: 2 accepted, 1 refused, 1 without an answer; 0 of the "
                        "recording passed over");
    EXPECT_FALSE(hasSucceeded);
    EXPECT_EQ(display.requestCount(), 4);
}

TEST_F(ReplayTest, Tells_it_as_JSON)
{
    options.json = true;
    record({0, 1});
    display.answerNext({ScriptedAnswer::ok(), ScriptedAnswer::closed()});
    const auto lines = support::jsonLines(play());
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0].keys(), (QStringList{"line", "n", "status", "took", "type"}));
    EXPECT_EQ(lines[0]["status"], 200);
    EXPECT_EQ(lines[1]["n"], 2);
    EXPECT_NE(lines[1]["error"].toString(), "");
    EXPECT_EQ(
        lines[2],
        (QJsonObject{
            {"sent", 2}, {"accepted", 1}, {"refused", 0}, {"unanswered", 1}, {"passedOver", 0}}));
}

TEST_F(ReplayTest, Succeeds_when_all_were_accepted)
{
    record({0, 1});
    play();
    EXPECT_TRUE(hasSucceeded);
}

TEST_F(ReplayTest, Sends_nothing_of_a_broken_or_empty_recording)
{
    record({0, 1});
    QFile file(options.recording);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("{broken\n");
    file.close();
    EXPECT_THROW(Replay{options}, UsageError);
    record({});
    EXPECT_THROW(Replay{options}, UsageError);
    EXPECT_EQ(display.requestCount(), 0);
}

TEST_F(ReplayTest, Ends_when_the_recording_breaks_meanwhile)
{
    record({0, 1});
    display.answerBy([this](const support::ScriptedRequest &) {
        QFile file(options.recording);
        EXPECT_TRUE(file.open(QIODevice::Append));
        file.write("{broken\n");
        return ScriptedAnswer::ok();
    });
    play();
    EXPECT_TRUE(error.contains(":3: ")) << error.toStdString();
    EXPECT_FALSE(hasSucceeded);
}

TEST_F(ReplayTest, Can_be_given_up_at_any_time)
{
    display.answer(ScriptedAnswer::blackHole());
    record({0});
    const auto start = std::chrono::steady_clock::now();
    {
        Replay replay(options);
        replay.start();
        ASSERT_TRUE(support::waitFor([&] { return display.requestCount() == 1; }));
        EXPECT_FALSE(replay.hasSucceeded());
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}
