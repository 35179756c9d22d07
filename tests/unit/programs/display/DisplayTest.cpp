#include <display/Display.h>

#include <common/MonotonicClock.h>
#include <common/UsageError.h>

#include <support/Json.h>
#include <support/LogCapture.h>
#include <support/OutputCapture.h>
#include <support/PrintQt.h>
#include <support/RawClient.h>

#include <QTcpServer>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {

class DisplayTest : public testing::Test
{
protected:
    DisplayTest()
    {
        options.port = 0;
        options.recordFile = folder.filePath("record.jsonl");
    }

    QList<QJsonObject> record() const
    {
        QFile file(options.recordFile);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return support::jsonLines(file.readAll());
    }

    QTemporaryDir folder;
    DisplayOptions options;
    support::LogCapture log;
};

support::RawClient::Answer post(const Display &display, const QByteArray &path,
                                const QByteArray &body)
{
    support::RawClient client(display.port());
    client.send(support::RawClient::request(path, body));
    return client.answer();
}

} // namespace

TEST_F(DisplayTest, Acknowledges_prints_and_records_a_message)
{
    const Display display(options);
    ASSERT_TRUE(display.isListening()) << display.errorString().toStdString();

    support::RawClient::Answer answer;
    const double before = monotonicMs();
    const QByteArray printed = support::outputOf(
        stdout, [&] { answer = post(display, "/content", R"({"data":"Привет","hide":true})"); });

    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, "");
    EXPECT_THAT(
        printed.toStdString(),
        testing::MatchesRegex("[0-9]{2}:[0-9]{2}:[0-9]{2}.[0-9]{3}  Content         hide\n"));
    ASSERT_EQ(record().size(), 1);
    const auto line = record().first();
    EXPECT_EQ(line["n"].toInt(), 1);
    EXPECT_EQ(line["path"].toString(), "/content");
    EXPECT_EQ(line["body"].toObject(), (QJsonObject{{"data", "Привет"}, {"hide", true}}));
    EXPECT_EQ(line["status"].toInt(), 200);
    EXPECT_GE(line["ms"].toDouble(), 0);
    EXPECT_GE(line["monotonicMs"].toDouble(), before - 0.001);
    EXPECT_LE(line["monotonicMs"].toDouble(), monotonicMs());
}

TEST_F(DisplayTest, Refuses_what_is_no_message_with_the_reason_and_goes_on)
{
    const Display display(options);
    support::RawClient::Answer refusal;
    support::RawClient::Answer answer;
    const QByteArray printed = support::outputOf(stdout, [&] {
        refusal = post(display, "/content", "[]");
        answer = post(display, "/configure", "{}");
    });

    EXPECT_EQ(refusal.status, 400);
    EXPECT_EQ(refusal.body, "not a JSON object");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(log.textsOf("display"), QStringList("refused POST /content: not a JSON object"));
    EXPECT_EQ(printed.count('\n'), 1) << "only the accepted one is printed";
    ASSERT_EQ(record().size(), 2);
    EXPECT_EQ(record()[0]["status"].toInt(), 400);
    EXPECT_TRUE(record()[0]["body"].isNull());
    EXPECT_EQ(record()[1]["status"].toInt(), 200);
}

TEST_F(DisplayTest, Sums_up_what_arrived_in_the_order_of_urgency)
{
    const Display display(options);
    const QByteArray printed = support::outputOf(stdout, [&] {
        for (const auto *path : {"/content", "/nothing", "/configure", "/content"})
            post(display, path, "{}");
        std::fputs("---\n", stdout);
        display.printSummary();
    });
    EXPECT_EQ(printed.mid(printed.indexOf("---\n") + 4), "Received: 4 messages, 1 refused\n"
                                                         "  Configure      1\n"
                                                         "  Content        2\n");
}

TEST_F(DisplayTest, Needs_no_record)
{
    options.recordFile.clear();
    const Display display(options);
    int status = 0;
    support::outputOf(stdout, [&] { status = post(display, "/image", "{}").status; });
    EXPECT_EQ(status, 200);
}

TEST_F(DisplayTest, Tells_why_it_does_not_listen)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    options.port = other.serverPort();
    const Display display(options);
    EXPECT_FALSE(display.isListening());
    EXPECT_EQ(display.port(), 0);
    EXPECT_EQ(display.errorString(), qt_error_string(EADDRINUSE));
}

TEST_F(DisplayTest, Leaves_an_older_record_alone_when_it_does_not_listen)
{
    const Display first(options);
    support::outputOf(stdout, [&] { post(first, "/content", "{}"); });
    options.port = first.port();
    const Display second(options);
    EXPECT_FALSE(second.isListening());
    EXPECT_EQ(record().size(), 1);
}

TEST_F(DisplayTest, Refuses_a_record_that_cannot_be_written)
{
    options.recordFile = folder.filePath("none/record.jsonl");
    EXPECT_THROW(Display{options}, UsageError);
}
