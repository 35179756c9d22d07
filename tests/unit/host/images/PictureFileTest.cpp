#include "PictureSamples.h"

#include <PictureFile.h>

#include <support/PrintQt.h>

#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

namespace {

class PictureFileTest : public testing::Test
{
protected:
    QString problemOf(const QByteArray &content) const
    {
        write(file, content);
        return readPictureFile(file).problem;
    }

    const QTemporaryDir folder;
    const QString file = folder.filePath("a.png");
};

/// A picture followed by as much as makes the file that large.
QByteArray pictureOf(qint64 bytes)
{
    auto content = encoded("BMP");
    content.append(bytes - content.size(), '\0');
    return content;
}

} // namespace

TEST_F(PictureFileTest, Is_read_as_it_is)
{
    const auto content = encoded("PNG");
    write(file, content);
    const auto picture = readPictureFile(file);
    EXPECT_EQ(picture.problem, "");
    EXPECT_TRUE(picture.content == content);
}

TEST_F(PictureFileTest, Has_a_digest_of_its_content)
{
    write(file, svg("1"));
    const auto one = readPictureFile(file).digest;
    EXPECT_FALSE(one.isEmpty());
    replace(file, svg("2"));
    EXPECT_NE(readPictureFile(file).digest, one);
    replace(file, svg("1"));
    EXPECT_EQ(readPictureFile(file).digest, one);
}

TEST_F(PictureFileTest, Is_told_apart_by_its_content_not_by_its_name)
{
    const auto other = folder.filePath("picture.txt");
    write(other, encoded("PNG"));
    EXPECT_EQ(readPictureFile(other).problem, "");
    EXPECT_EQ(problemOf("hello"), "это не картинка, а text/plain");
}

TEST_F(PictureFileTest, Has_no_content_when_there_is_a_problem)
{
    write(file, "hello");
    const auto picture = readPictureFile(file);
    EXPECT_EQ(picture.content, "");
    EXPECT_EQ(picture.digest, "");
}

TEST_F(PictureFileTest, Is_refused_when_it_is_empty)
{
    EXPECT_EQ(problemOf(""), "файл пуст");
}

TEST_F(PictureFileTest, Is_refused_above_eight_mebibytes)
{
    EXPECT_EQ(problemOf(pictureOf(maxPictureFileBytes)), "");
    EXPECT_EQ(problemOf(pictureOf(maxPictureFileBytes + 1)), "файл больше 8388608 байт");
}

TEST_F(PictureFileTest, Is_not_read_to_its_end_when_it_has_none)
{
    EXPECT_EQ(readPictureFile("/dev/zero").problem, "это не файл");
}

TEST_F(PictureFileTest, Is_refused_when_it_is_missing)
{
    EXPECT_EQ(readPictureFile(file).problem, "не читается: No such file or directory");
    EXPECT_EQ(readPictureFile("").problem, "не читается: No such file or directory");
}

TEST_F(PictureFileTest, Is_refused_when_reading_fails)
{
    EXPECT_EQ(readPictureFile("/proc/self/mem").problem, "не читается: Input/output error");
}

/// While it lives the process is one that may not read everything, which root may.
class OrdinaryUser
{
public:
    OrdinaryUser() { EXPECT_EQ(seteuid(m_before == 0 ? nobody : m_before), 0); }
    ~OrdinaryUser() { EXPECT_EQ(seteuid(m_before), 0); }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

private:
    static constexpr uid_t nobody = 65534;
    const uid_t m_before = geteuid();
};

TEST_F(PictureFileTest, Is_refused_when_it_may_not_be_read)
{
    write(file, encoded("PNG"));
    ASSERT_EQ(chmod(qPrintable(file), 0), 0);
    ASSERT_EQ(chmod(qPrintable(folder.path()), 0755), 0);
    const OrdinaryUser user;
    EXPECT_EQ(readPictureFile(file).problem, "не читается: Permission denied");
}

TEST_F(PictureFileTest, Is_refused_when_it_is_a_folder)
{
    EXPECT_EQ(readPictureFile(folder.path()).problem, "это не файл");
}

TEST_F(PictureFileTest, Is_refused_at_once_when_it_is_a_pipe)
{
    ASSERT_EQ(mkfifo(qPrintable(file), 0600), 0);
    EXPECT_EQ(readPictureFile(file).problem, "это не файл"); // and does not wait for a writer
}
