#include "PictureFilesFixture.h"

#include <QDir>

#include <sys/stat.h>

namespace {

using BrokenPictureFiles = PictureFilesFixture;

class WithSmallCache : public PictureFilesFixture
{
protected:
    WithSmallCache() : PictureFilesFixture(svg("1").size() + 1) {}

    void addOther()
    {
        write(other, two);
        files.add(milkBarcode, other);
        files.find(milkBarcode);
        EXPECT_EQ(nextAnnounced(), QStringList(announcement(milkBarcode, two)));
    }

    const QString other = folder.filePath("b.png");
};

} // namespace

TEST_F(BrokenPictureFiles, Are_known_but_not_loaded_and_logged_once)
{
    write(file, "hello");
    files.add(milk, file);
    files.find(milk);
    EXPECT_TRUE(support::waitFor([&] { return !logged().isEmpty(); }));
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(files.find(milk).value(), milk.value());
        EXPECT_EQ(uriOf(milk), "");
        expectNothingAnnounced();
    }
    EXPECT_EQ(logged(), QStringList(logLine("это не картинка, а text/plain")));
    EXPECT_EQ(log.lines().last().level, QtWarningMsg);
}

TEST_F(BrokenPictureFiles, Are_loaded_when_they_are_mended)
{
    write(file, one.left(20));
    files.add(milk, file);
    files.find(milk);
    EXPECT_TRUE(support::waitFor([&] { return !logged().isEmpty(); }));
    write(file, one);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, one)));
    EXPECT_EQ(logged().size(), 1);
}

TEST_F(BrokenPictureFiles, Keep_their_earlier_content)
{
    addLoaded(milk, one);
    int breaks = 0;
    for (const auto &content : {QByteArray("hello"), QByteArray(), encoded("PNG").left(60)}) {
        replace(file, content);
        ++breaks;
        EXPECT_TRUE(support::waitFor([&] { return logged().size() == breaks; }));
        EXPECT_EQ(uriOf(milk), Image(milk, one).toUri({}));
    }
    expectNothingAnnounced();
    EXPECT_EQ(logged(), (QStringList{logLine("это не картинка, а text/plain"), logLine("файл пуст"),
                                     logLine("файл обрывается")}));

    replace(file, two);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, two)));
}

TEST_F(BrokenPictureFiles, Are_no_files_at_all)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("folder"));
    ASSERT_EQ(mkfifo(qPrintable(folder.filePath("pipe")), 0600), 0);
    files.add(milk, folder.filePath("folder"));
    files.add(milkBarcode, folder.filePath("pipe"));
    EXPECT_EQ(files.find(milk).value(), milk.value());
    EXPECT_EQ(files.find(milkBarcode).value(), milkBarcode.value());
    EXPECT_TRUE(support::waitFor([&] { return logged().size() == 2; }));
    expectNothingAnnounced();
    EXPECT_EQ(logged().size(), 2);
}

TEST_F(BrokenPictureFiles, Give_way_to_a_picture_of_that_name)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("a.png"));
    files.add(milk, file);
    files.find(milk);
    EXPECT_TRUE(support::waitFor([&] { return !logged().isEmpty(); }));
    ASSERT_TRUE(QDir(folder.path()).rmdir("a.png"));
    write(file, one);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, one)));
}

TEST_F(BrokenPictureFiles, May_have_vanished_before_they_are_read)
{
    write(file, one);
    files.add(milk, file);
    const auto before = folder.filePath("before.png"); // keeps the reader busy
    write(before, encoded("PNG", Qt::red, QSize(3000, 3000)));
    files.add(milkBarcode, before);
    files.find(milkBarcode);
    EXPECT_EQ(files.find(milk).value(), milk.value());
    ASSERT_TRUE(QFile::remove(file));
    support::waitFor([&] { return !logged().isEmpty(); });
    EXPECT_EQ(logged(), QStringList(logLine("не читается: No such file or directory")));
    EXPECT_EQ(files.find(milk).value(), "");
    EXPECT_EQ(allAnnounced().size(), 1); // the other
    write(file, one);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, one)));
}

TEST_F(WithSmallCache, What_was_dropped_is_loaded_again_and_announced_to_who_asked)
{
    addLoaded(milk, one);
    const ImageId sameFile(ImageId::GoodsCode, "same");
    files.add(sameFile, file);
    EXPECT_TRUE(files.find(milk).isLoaded());
    addOther();

    EXPECT_FALSE(files.find(milk).isLoaded());
    EXPECT_EQ(allAnnounced(), QStringList(announcement(milk, one)));
    EXPECT_TRUE(files.find(milk).isLoaded());
}

TEST_F(WithSmallCache, What_was_dropped_and_broken_since_is_announced_when_it_is_mended)
{
    addLoaded(milk, one);
    addOther();
    replace(file, "hello");
    EXPECT_TRUE(support::waitFor([&] { return !logged().isEmpty(); }));
    EXPECT_FALSE(files.find(milk).isLoaded());
    replace(file, one);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, one)));
}
