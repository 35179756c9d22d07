#include "PictureSamples.h"

#include <FileWatcher.h>

#include <support/PrintQt.h>
#include <support/Wait.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

namespace {

using namespace std::chrono_literals;

/// Longer than a change takes to settle, twice: once for the folder and once for the file.
constexpr auto quiet = 300ms;

class FileWatcherTest : public testing::Test
{
protected:
    FileWatcherTest()
    {
        QObject::connect(&watcher, &FileWatcher::changed, &watcher,
                         [this](const QString &name) { changed.append(name); });
    }

    /// Runs events until a change is told and no further one follows; returns the files told of.
    QStringList changes()
    {
        EXPECT_TRUE(support::waitFor([&] { return !changed.isEmpty(); }));
        support::letPass(quiet);
        return std::exchange(changed, {});
    }

    void expectNoChange()
    {
        support::letPass(quiet);
        EXPECT_EQ(changed, QStringList());
    }

    /// Watches the file and lets the first look at its folder pass.
    void watchFile()
    {
        watcher.add(file);
        expectNoChange();
    }

    /// How many files and folders the system watches for this process.
    static qsizetype watches()
    {
        qsizetype count = 0;
        const QDir descriptors("/proc/self/fdinfo");
        for (const auto &name : descriptors.entryList(QDir::Files)) {
            QFile descriptor(descriptors.filePath(name));
            if (descriptor.open(QIODevice::ReadOnly))
                count += descriptor.readAll().count("inotify wd:");
        }
        return count;
    }

    const QTemporaryDir folder;
    const QString file = folder.filePath("pictures/a.png");
    const bool made = QDir(folder.path()).mkdir("pictures");
    FileWatcher watcher;
    QStringList changed;
};

} // namespace

TEST_F(FileWatcherTest, Tells_that_a_file_appears)
{
    watchFile();
    write(file, "one");
    EXPECT_EQ(changes(), QStringList(file));
}

TEST_F(FileWatcherTest, Tells_that_a_file_is_moved_to_its_place)
{
    watchFile();
    replace(file, "one");
    EXPECT_EQ(changes(), QStringList(file));
}

TEST_F(FileWatcherTest, Tells_each_time_that_a_file_is_written_in_place)
{
    write(file, "one");
    watchFile();
    for (const auto *content : {"two", "three", "four"}) {
        SCOPED_TRACE(content);
        write(file, content);
        EXPECT_EQ(changes(), QStringList(file));
    }
}

TEST_F(FileWatcherTest, Tells_each_time_that_a_file_is_replaced_and_then_written_in_place)
{
    write(file, "one");
    watchFile();
    for (const auto *content : {"two", "three"}) {
        SCOPED_TRACE(content);
        replace(file, content);
        EXPECT_EQ(changes(), QStringList(file));
        write(file, "in place");
        EXPECT_EQ(changes(), QStringList(file));
    }
}

TEST_F(FileWatcherTest, Tells_that_a_file_vanishes_and_comes_back)
{
    write(file, "one");
    watchFile();
    for (int time = 0; time < 2; ++time) {
        SCOPED_TRACE(time);
        ASSERT_TRUE(QFile::remove(file));
        EXPECT_EQ(changes(), QStringList(file));
        write(file, "one");
        EXPECT_EQ(changes(), QStringList(file));
    }
}

TEST_F(FileWatcherTest, Tells_of_what_changes_right_after_a_file_was_added)
{
    write(file, "one");
    watcher.add(file);
    replace(file, "two");
    EXPECT_EQ(changes(), QStringList(file));

    const auto other = folder.filePath("pictures/b.png");
    watcher.add(other);
    write(other, "b");
    EXPECT_EQ(changes(), QStringList(other));
}

TEST_F(FileWatcherTest, Tells_of_a_file_whose_folders_appear_later)
{
    const auto deep = folder.filePath("later/still/a.png");
    watcher.add(deep);
    expectNoChange();
    ASSERT_TRUE(QDir(folder.path()).mkdir("later"));
    expectNoChange();
    ASSERT_TRUE(QDir(folder.path()).mkpath("later/still"));
    expectNoChange();
    write(deep, "one");
    EXPECT_EQ(changes(), QStringList(deep));
}

TEST_F(FileWatcherTest, Tells_of_a_file_whose_folder_is_replaced)
{
    write(file, "one");
    watchFile();
    QDir dir(folder.path());
    ASSERT_TRUE(dir.mkdir("new"));
    write(folder.filePath("new/a.png"), "two");
    ASSERT_TRUE(dir.rename("pictures", "old"));
    ASSERT_TRUE(dir.rename("new", "pictures"));
    EXPECT_EQ(changes(), QStringList(file));
    replace(file, "three"); // in the new folder
    EXPECT_EQ(changes(), QStringList(file));
}

TEST_F(FileWatcherTest, Tells_of_a_link_that_comes_to_mean_another_file)
{
    write(folder.filePath("one.png"), "one");
    write(folder.filePath("two.png"), "two");
    ASSERT_TRUE(QFile::link(folder.filePath("one.png"), file));
    watchFile();
    ASSERT_TRUE(QFile::link(folder.filePath("two.png"), file + ".new"));
    ASSERT_EQ(std::rename(qPrintable(file + ".new"), qPrintable(file)), 0);
    EXPECT_EQ(changes(), QStringList(file));
    write(folder.filePath("two.png"), "three");
    EXPECT_EQ(changes(), QStringList(file));
    write(folder.filePath("one.png"), "four");
    expectNoChange();
}

TEST_F(FileWatcherTest, Tells_only_of_the_file_that_changed)
{
    const auto other = folder.filePath("pictures/b.png");
    write(file, "one");
    write(other, "one");
    watcher.add(other);
    watchFile();
    write(folder.filePath("pictures/unwatched.png"), "x");
    expectNoChange();
    replace(other, "two");
    EXPECT_EQ(changes(), QStringList(other));
}

TEST_F(FileWatcherTest, Tells_once_of_a_file_that_is_written_bit_by_bit)
{
    watchFile();
    QFile writer(file);
    ASSERT_TRUE(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    // Parts that follow each other late are changes of their own: on a busy machine it takes tries.
    const auto writeSteadily = [&] {
        for (int part = 0; part < 10; ++part) {
            EXPECT_EQ(writer.write("part"), 4);
            QElapsedTimer written;
            written.start();
            support::letPass(40ms);
            if (written.elapsed() > 80)
                return false;
            EXPECT_EQ(changed, QStringList());
        }
        return true;
    };
    bool wasSteady = writeSteadily();
    for (int tries = 1; tries < 30 && !wasSteady; ++tries) {
        support::letPass(500ms);
        changed.clear();
        wasSteady = writeSteadily();
    }
    ASSERT_TRUE(wasSteady) << "this machine is too busy to write steadily";
    EXPECT_EQ(changes(), QStringList(file));
}

TEST_F(FileWatcherTest, Takes_a_file_for_quiet_until_it_changes_and_again_once_that_is_told)
{
    write(file, "one");
    watchFile();
    EXPECT_TRUE(watcher.isQuiet(file));
    replace(file, "two");
    EXPECT_FALSE(watcher.isQuiet(file)); // before the system has told of the change
    EXPECT_TRUE(support::waitFor([&] { return watcher.isQuiet(file); }));
    EXPECT_EQ(changed, QStringList(file));

    write(file, "three"); // told of by the system
    EXPECT_TRUE(support::waitFor([&] { return !watcher.isQuiet(file); }));
    EXPECT_TRUE(support::waitFor([&] { return watcher.isQuiet(file); }));
    EXPECT_EQ(changed, QStringList({file, file}));
}

TEST_F(FileWatcherTest, Tells_of_a_change_that_was_noticed_by_asking)
{
    write(file, "one");
    watcher.add(file);
    replace(file, "two");
    EXPECT_FALSE(watcher.isQuiet(file));
    EXPECT_EQ(changes(), QStringList(file));
}

TEST_F(FileWatcherTest, Does_not_tell_of_a_file_that_was_removed_from_it)
{
    write(file, "one");
    watchFile();
    replace(file, "two");
    EXPECT_FALSE(watcher.isQuiet(file));
    watcher.remove(file);
    EXPECT_TRUE(watcher.isQuiet(file));
    replace(file, "three");
    expectNoChange();
}

TEST_F(FileWatcherTest, Lets_whoever_hears_of_a_change_remove_the_file)
{
    write(file, "one");
    watchFile();
    QObject::connect(&watcher, &FileWatcher::changed, &watcher, &FileWatcher::remove);
    write(file, "two");
    EXPECT_EQ(changes(), QStringList(file));
    write(file, "three");
    expectNoChange();
}

TEST_F(FileWatcherTest, Watches_no_file_that_was_removed)
{
    write(file, "a");
    watchFile();
    const auto before = watches();
    watcher.remove(file);
    EXPECT_EQ(watches(), before - 1);
}
