#include <adservice/AdFolder.h>

#include <support/PrintQt.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>

namespace {

class AdFolderTest : public testing::Test
{
protected:
    AdFolderTest()
    {
        EXPECT_TRUE(QDir(folder.path()).mkpath("ads/more"));
        write("secret.txt", "secret");
        write("ads/coffee.svg", R"(<svg xmlns="http://www.w3.org/2000/svg"/>)");
        write("ads/хлеб с маслом.png", "\x89PNG\r\n\x1a\n");
        write("ads/.hidden", "hidden");
        write("ads/more/inner.svg", "inner");
        EXPECT_TRUE(QFile::link(path("secret.txt"), path("ads/link.txt")));
        EXPECT_TRUE(QFile::link(folder.path(), path("ads/up")));
        EXPECT_EQ(mkfifo(path("ads/pipe").toUtf8().constData(), S_IRUSR | S_IWUSR), 0);
    }

    QString path(const QString &name) const { return folder.filePath(name); }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(name);
        file.write(content);
    }

    QTemporaryDir folder;
    AdFolder ads{path("ads")};
};

} // namespace

TEST_F(AdFolderTest, Gives_a_plain_file_with_its_type)
{
    const auto svg = ads.find("coffee.svg");
    ASSERT_TRUE(svg);
    EXPECT_EQ(svg->mimeType, "image/svg+xml");
    EXPECT_EQ(svg->content, R"(<svg xmlns="http://www.w3.org/2000/svg"/>)");

    const auto png = ads.find("хлеб с маслом.png");
    ASSERT_TRUE(png);
    EXPECT_EQ(png->mimeType, "image/png");
}

TEST_F(AdFolderTest, Leads_nowhere_else)
{
    const QStringList names{"",
                            ".",
                            "..",
                            "/",
                            "./coffee.svg",
                            "../secret.txt",
                            "../ads/coffee.svg",
                            "more/../coffee.svg",
                            "..\\secret.txt",
                            path("secret.txt"),
                            path("ads/coffee.svg"),
                            "more",
                            "more/inner.svg",
                            "link.txt",
                            "up",
                            "up/secret.txt",
                            ".hidden",
                            "pipe",
                            "coffee.svg/",
                            "coffee.svg/.",
                            QString("coffee.svg") + QChar(0),
                            QString("../secret.txt") + QChar(0) + ".svg",
                            "%2e%2e/secret.txt",
                            "COFFEE.SVG",
                            "coffee*",
                            "none.svg"};
    for (const auto &name : names)
        EXPECT_FALSE(ads.find(name)) << qPrintable(name);
}

TEST_F(AdFolderTest, Gives_nothing_that_cannot_be_read)
{
    ASSERT_TRUE(QFile::remove(path("ads/coffee.svg")));
    EXPECT_FALSE(ads.find("coffee.svg"));
    EXPECT_FALSE(AdFolder(path("none")).find("coffee.svg"));
}

TEST_F(AdFolderTest, Has_no_files_without_a_folder)
{
    const auto before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path("ads")));
    EXPECT_FALSE(AdFolder({}).find("coffee.svg"));
    QDir::setCurrent(before);
}
