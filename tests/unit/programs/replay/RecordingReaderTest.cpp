#include <replay/RecordingReader.h>

#include <common/UsageError.h>

#include <support/PrintQt.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class RecordingReaderTest : public testing::Test
{
protected:
    QString write(const QByteArray &content) const
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return fileName;
    }

    QList<RecordedMessage> messagesOf(const QByteArray &content)
    {
        RecordingReader reader(write(content));
        QList<RecordedMessage> messages;
        while (const auto message = reader.next())
            messages.append(*message);
        passedOver = reader.passedOver();
        return messages;
    }

    /// What is wrong with a recording, without the name of the file and the mend.
    QString problemOf(const QByteArray &content)
    {
        try {
            messagesOf(content);
        } catch (const UsageError &error) {
            const auto text = QString::fromUtf8(error.what());
            const auto start = "--recording " + fileName + ':';
            EXPECT_TRUE(text.startsWith(start)) << error.what();
            EXPECT_TRUE(text.endsWith(". Give a recording of a register's messages."));
            return text.mid(start.size()).section(". ", 0, 0);
        }
        return {};
    }

    QTemporaryDir folder;
    const QString fileName = folder.filePath("recording.jsonl");
    int passedOver = 0;
};

} // namespace

TEST_F(RecordingReaderTest, Reads_what_the_recorder_writes)
{
    const auto messages = messagesOf(
        R"({"n":1,"time":"2026-01-02T03:04:05.678Z","ms":12.5,"to":"display","method":"POST","path":"/content?a=1","type":"Content","body":{"a":1},"status":200,"took":1.2}
{"n":2,"ms":13,"to":"plug-in","method":"POST","path":"/content","body":{"name":"getImage"},"status":200,"took":1}
{"n":3,"ms":14,"to":"display","method":"POST","path":"/configure","body":{},"status":0,"took":1,"error":"away"}
{"n":4,"ms":15,"to":"display","method":"GET","path":"/content","status":200,"took":1}
{"n":5,"ms":16,"to":"display","method":"POST","path":"/elsewhere","bodyText":"x","status":200,"took":1}
)");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0].line, 1);
    EXPECT_EQ(messages[0].ms, 12.5);
    EXPECT_EQ(messages[0].type, "Content");
    EXPECT_EQ(messages[0].path, "/content?a=1");
    EXPECT_EQ(messages[0].body, R"({"a":1})");
    EXPECT_EQ(passedOver, 3);
}

TEST_F(RecordingReaderTest, Reads_what_the_display_records)
{
    const auto messages = messagesOf(
        R"({"n":1,"ms":5,"path":"/configure","body":{"b":"Хлеб"},"status":200,"monotonicMs":25}
{"n":2,"ms":6,"path":"/content","body":null,"status":400,"monotonicMs":26}

{"n":3,"ms":7,"path":"/priceList","body":{"close":true},"status":204,"monotonicMs":27})");
    ASSERT_EQ(messages.size(), 2);
    EXPECT_EQ(messages[0].body, R"({"b":"Хлеб"})");
    EXPECT_EQ(messages[1].line, 4);
    EXPECT_EQ(messages[1].type, "PriceList");
    EXPECT_EQ(passedOver, 1);
}

TEST_F(RecordingReaderTest, Reads_what_the_inspector_exports)
{
    const auto messages = messagesOf(
        R"({"kind":"note","text":"the display has started","ms":1,"id":1}
{"kind":"asked","type":"Content","ms":2,"id":2}
{"kind":"message","n":1,"type":"Content","path":"/content","body":{"a":1},"bytes":7,"status":200,"reason":"","ms":3,"tookMs":0.1,"replay":false,"id":3}
{"kind":"request","name":"getImage","body":{},"ms":4,"tookMs":1,"accepted":true,"id":4}
)");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0].line, 3);
    EXPECT_EQ(passedOver, 0);
}

TEST_F(RecordingReaderTest, Names_the_line_that_is_broken_and_why)
{
    const QByteArray good = R"({"ms":1,"path":"/content","body":{}})"
                            "\n";
    EXPECT_EQ(problemOf(good + "{\"ms\":"), "2: not JSON: unterminated object at byte 6");
    EXPECT_EQ(problemOf("\n[1]"), "2: not a JSON object");
    EXPECT_EQ(problemOf("{\"do\":\"open\"}"), "1: \"path\" is missing");
    EXPECT_EQ(problemOf(good + good + R"({"ms":1,"path":"/content","body":[1]})"),
              "3: \"body\" is no JSON object");
    for (const auto *ms : {"\"1\"", "-1", "null"})
        EXPECT_EQ(problemOf(QByteArray(R"({"path":"/content","body":{},"ms":)") + ms + '}'),
                  "1: \"ms\" is no time");
}

TEST_F(RecordingReaderTest, Refuses_a_line_that_would_fill_the_memory)
{
    const QByteArray start = R"({"ms":1,"path":"/content","body":{"a":")";
    const QByteArray end = "\"}}";
    const QByteArray filler(RecordingReader::maxLineBytes - start.size() - end.size() - 1, 'x');
    EXPECT_EQ(messagesOf(start + filler + end + '\n').size(), 1);
    EXPECT_EQ(problemOf(start + filler + 'x' + end + '\n'), "1: longer than 67108864 bytes");
    EXPECT_EQ(problemOf(start + filler + 'x' + end), "1: longer than 67108864 bytes");
}

TEST_F(RecordingReaderTest, Says_why_a_file_cannot_be_read)
{
    const auto errorOf = [](const QString &name) -> std::string {
        try {
            const RecordingReader reader(name);
        } catch (const UsageError &error) {
            return error.what();
        }
        return {};
    };
    EXPECT_EQ(errorOf(fileName),
              "--recording " + fileName.toStdString() + ": No such file or directory.");
    EXPECT_EQ(errorOf("/dev/null"), "--recording /dev/null is no file: give one.");
    EXPECT_EQ(errorOf(folder.path()),
              "--recording " + folder.path().toStdString() + " is no file: give one.");
}
