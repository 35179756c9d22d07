#include <record/RecordingFile.h>

#include <common/UsageError.h>

#include <support/OutputCapture.h>
#include <support/PrintQt.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class RecordingFileTest : public testing::Test
{
protected:
    QByteArray content() const
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    static QString errorOf(const QString &name)
    {
        try {
            const RecordingFile file(name);
        } catch (const UsageError &error) {
            return error.what();
        }
        return {};
    }

    QTemporaryDir folder;
    const QString fileName = folder.filePath("recording.jsonl");
};

} // namespace

TEST_F(RecordingFileTest, Has_each_line_before_the_next_comes)
{
    RecordingFile file(fileName);
    EXPECT_EQ(content(), "");
    file.write("1\n");
    EXPECT_EQ(content(), "1\n");
    file.write("2\n");
    EXPECT_EQ(content(), "1\n2\n");
    EXPECT_FALSE(file.hasFailed());
}

TEST_F(RecordingFileTest, Can_be_read_by_its_owner_only)
{
    const RecordingFile file(fileName);
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_FALSE(QFile::permissions(fileName) & others);
}

TEST_F(RecordingFileTest, Takes_no_file_that_exists)
{
    RecordingFile(fileName).write("precious\n");
    const auto error = errorOf(fileName);
    EXPECT_TRUE(error.startsWith("--output " + fileName + ": ")) << error.toStdString();
    EXPECT_TRUE(error.endsWith(" Choose another name, or remove the file.")) << error.toStdString();
    EXPECT_EQ(content(), "precious\n");
}

TEST_F(RecordingFileTest, Says_why_a_file_cannot_be_made)
{
    const auto name = folder.filePath("none/recording.jsonl");
    const auto error = errorOf(name);
    EXPECT_TRUE(error.startsWith("--output " + name + ": ")) << error.toStdString();
    EXPECT_TRUE(error.endsWith(u'.')) << error.toStdString();
}

TEST_F(RecordingFileTest, May_be_standard_output)
{
    const auto printed = support::outputOf(stdout, [] { RecordingFile("-").write("line\n"); });
    EXPECT_EQ(printed, "line\n");
}
