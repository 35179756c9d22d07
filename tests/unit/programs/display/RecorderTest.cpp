#include <display/Recorder.h>

#include <common/UsageError.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class RecorderTest : public testing::Test
{
protected:
    QByteArray content() const
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QTemporaryDir folder;
    const QString fileName = folder.filePath("record.jsonl");
    const ReceivedMessage accepted{"Content", {{"b", "Хлеб"}, {"a", 1}}, 200, {}};
    const ReceivedMessage refused{"Content", {}, 400, "not a JSON object"};
};

} // namespace

TEST_F(RecorderTest, Writes_a_line_with_its_keys_in_a_fixed_order)
{
    Recorder recorder(fileName);
    recorder.write(1, 12.3, 5012.3, "/content", accepted);
    EXPECT_EQ(content(), "{\"n\":1,\"ms\":12.3,\"path\":\"/content\",\"body\":{\"a\":1,\"b\":"
                         "\"Хлеб\"},\"status\":200,\"monotonicMs\":5012.3}\n");
}

TEST_F(RecorderTest, Writes_no_body_for_a_refused_message)
{
    Recorder recorder(fileName);
    recorder.write(2, 1, 2, "/content", refused);
    EXPECT_EQ(content(), "{\"n\":2,\"ms\":1,\"path\":\"/content\",\"body\":null,\"status\":400,"
                         "\"monotonicMs\":2}\n");
}

TEST_F(RecorderTest, Has_each_line_in_the_file_before_the_next_comes)
{
    Recorder recorder(fileName);
    for (int n = 1; n <= 3; ++n) {
        recorder.write(n, n, n, "/content", accepted);
        const auto lines = support::jsonLines(content());
        ASSERT_EQ(lines.size(), n);
        EXPECT_EQ(lines.last()["n"].toInt(), n);
    }
}

TEST_F(RecorderTest, Rounds_times_to_microseconds)
{
    Recorder recorder(fileName);
    recorder.write(1, 12.3456789, 98765432.1234567, "/content", accepted);
    const auto line = support::jsonLines(content()).value(0);
    EXPECT_EQ(line["ms"].toDouble(), 12.346);
    EXPECT_EQ(line["monotonicMs"].toDouble(), 98765432.123);
}

TEST_F(RecorderTest, Starts_a_new_record)
{
    Recorder(fileName).write(1, 1, 1, "/content", accepted);
    Recorder(fileName).write(7, 1, 1, "/content", accepted);
    const auto lines = support::jsonLines(content());
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0]["n"].toInt(), 7);
}

TEST_F(RecorderTest, Refuses_a_file_that_cannot_be_written)
{
    for (const auto &name : {folder.filePath("none/record.jsonl"), folder.path()}) {
        try {
            const Recorder recorder(name);
            ADD_FAILURE() << "no error";
        } catch (const UsageError &error) {
            const auto text = QString::fromUtf8(error.what());
            EXPECT_TRUE(text.startsWith("--record " + name + ": ")) << error.what();
            EXPECT_TRUE(text.endsWith(u'.')) << error.what();
        }
    }
}
