#include <display/LookFile.h>

#include <support/PrintQt.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

class LookFileTest : public testing::Test
{
protected:
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    QTemporaryDir folder;
    const QByteArray svg = "<svg xmlns=\"http://www.w3.org/2000/svg\"/>";
};

} // namespace

TEST_F(LookFileTest, Is_read_by_its_path_or_address)
{
    const auto path = write("logo.svg", svg);
    const auto look = LookFile::read(path);
    EXPECT_EQ(look.contentType, "image/svg+xml");
    EXPECT_EQ(look.content, svg);
    EXPECT_EQ(LookFile::read("file://" + path).content, svg);
}

TEST_F(LookFileTest, Is_not_read_unless_it_is_a_picture)
{
    EXPECT_TRUE(LookFile::read(write("secret.txt", "secret")).content.isEmpty());
    EXPECT_TRUE(LookFile::read("/etc/passwd").content.isEmpty());
}

TEST_F(LookFileTest, Is_not_read_unless_it_is_a_file_of_bearable_size)
{
    EXPECT_TRUE(LookFile::read(folder.path()).content.isEmpty());
    EXPECT_TRUE(LookFile::read(folder.filePath("missing.svg")).content.isEmpty());
    const auto pipe = folder.filePath("pipe.svg");
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    EXPECT_TRUE(LookFile::read(pipe).content.isEmpty());
    EXPECT_TRUE(LookFile::read(write("huge.svg", svg.leftJustified(16'777'217))).content.isEmpty());
}

TEST_F(LookFileTest, Is_not_read_without_an_end)
{
    EXPECT_TRUE(LookFile::read("/proc/self/pagemap").content.isEmpty());
}

TEST_F(LookFileTest, Is_none_without_a_path)
{
    EXPECT_TRUE(LookFile::read(QJsonValue()).content.isEmpty());
    EXPECT_TRUE(LookFile::read(5).content.isEmpty());
    EXPECT_TRUE(LookFile::read("").content.isEmpty());
}
