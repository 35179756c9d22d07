#include "PictureSamples.h"

#include <FileStamp.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <support/Wait.h>

namespace {

class FileStampTest : public testing::Test
{
protected:
    FileStampTest() { write(file, "one"); }

    const QTemporaryDir folder;
    const QString file = folder.filePath("a.png");
};

} // namespace

TEST_F(FileStampTest, Stays_while_a_file_is_only_read)
{
    const auto before = stampOf(file);
    ASSERT_TRUE(before);
    QFile reader(file);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    EXPECT_EQ(reader.readAll(), "one");
    EXPECT_EQ(stampOf(file), before);
}

TEST_F(FileStampTest, Differs_when_a_file_is_replaced_by_one_of_the_same_size_and_date)
{
    const auto before = stampOf(file);
    const auto date = QFileInfo(file).lastModified();
    replace(file, "two");
    QFile dated(file);
    ASSERT_TRUE(dated.open(QIODevice::ReadWrite));
    ASSERT_TRUE(dated.setFileTime(date, QFileDevice::FileModificationTime));
    EXPECT_NE(stampOf(file), before);
}

TEST_F(FileStampTest, Differs_when_a_file_is_written_in_place)
{
    const auto before = stampOf(file);
    write(file, "three");
    EXPECT_NE(stampOf(file), before);
    const auto longer = stampOf(file);
    EXPECT_TRUE(support::waitFor([&] { // the clock of a file system ticks every few milliseconds
        write(file, "seven");
        return stampOf(file) != longer;
    }));
}

TEST_F(FileStampTest, Is_empty_where_there_is_no_file)
{
    EXPECT_FALSE(stampOf(folder.filePath("none.png")));
    EXPECT_FALSE(stampOf(folder.filePath("none/a.png")));
    EXPECT_FALSE(stampOf({}));
    ASSERT_TRUE(QFile::link(folder.filePath("none.png"), folder.filePath("dangling.png")));
    EXPECT_FALSE(stampOf(folder.filePath("dangling.png")));
}

TEST_F(FileStampTest, Is_that_of_the_file_behind_a_link)
{
    ASSERT_TRUE(QFile::link(file, folder.filePath("link.png")));
    EXPECT_EQ(stampOf(folder.filePath("link.png")), stampOf(file));
}
