#include "PictureFilesFixture.h"

#include <QDir>

#include <thread>

namespace {

using PictureFilesTest = PictureFilesFixture;

} // namespace

TEST_F(PictureFilesTest, Are_unknown_while_there_is_no_file)
{
    EXPECT_EQ(files.find(milk).value(), "");
    files.add(milk, file);
    EXPECT_TRUE(files.contains(milk));
    EXPECT_FALSE(files.contains(milkBarcode));
    EXPECT_EQ(files.find(milk).value(), "");
    expectNothingAnnounced();
}

TEST_F(PictureFilesTest, Are_known_but_not_loaded_until_they_are_announced)
{
    write(file, one);
    files.add(milk, file);
    const auto found = files.find(milk);
    EXPECT_EQ(static_cast<const ImageId &>(found), milk);
    EXPECT_EQ(found.toUri({}), "");
    EXPECT_EQ(announced, QStringList());
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, one)));
    EXPECT_EQ(uriOf(milk), Image(milk, one).toUri({}));
}

TEST_F(PictureFilesTest, Are_loaded_only_when_they_are_asked_for)
{
    write(file, one);
    files.add(milk, file);
    expectNothingAnnounced();
}

TEST_F(PictureFilesTest, Are_announced_once_however_often_they_are_asked_for)
{
    write(file, one);
    files.add(milk, file);
    for (int time = 0; time < 5; ++time)
        files.find(milk);
    EXPECT_EQ(allAnnounced(), QStringList(announcement(milk, one)));
    for (int time = 0; time < 5; ++time)
        files.find(milk);
    expectNothingAnnounced();
}

TEST_F(PictureFilesTest, Are_announced_under_each_of_their_identifiers)
{
    write(file, one);
    files.add(milk, file);
    files.add(milkBarcode, file);
    files.find(milk);
    auto both = allAnnounced();
    both.sort();
    EXPECT_EQ(both, (QStringList{announcement(milk, one), announcement(milkBarcode, one)}));
    EXPECT_EQ(uriOf(milkBarcode), Image(milkBarcode, one).toUri({}));
}

TEST_F(PictureFilesTest, Are_announced_when_they_appear)
{
    files.add(milk, file);
    write(file, one);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, one)));
}

TEST_F(PictureFilesTest, Are_not_read_while_they_are_being_written)
{
    files.add(milk, file);
    write(file, one.left(10));
    EXPECT_EQ(files.find(milk).value(), milk.value());
    std::this_thread::sleep_for(quiet); // time in which the reader might read
    write(file, one);
    EXPECT_EQ(allAnnounced(), QStringList(announcement(milk, one)));

    replace(file, two.left(10));
    EXPECT_EQ(uriOf(milk), Image(milk, one).toUri({}));
    write(file, two);
    EXPECT_EQ(allAnnounced(), QStringList(announcement(milk, two)));
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(PictureFilesTest, Are_announced_anew_when_they_are_written_in_place_or_replaced)
{
    addLoaded(milk, one);
    write(file, two);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, two)));
    replace(file, one);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, one)));
    write(file, two);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, two)));
    EXPECT_EQ(uriOf(milk), Image(milk, two).toUri({}));
}

TEST_F(PictureFilesTest, Are_not_announced_anew_when_the_picture_is_the_same)
{
    addLoaded(milk, one);
    write(file, one);
    expectNothingAnnounced();
    replace(file, one);
    expectNothingAnnounced();
    EXPECT_EQ(uriOf(milk), Image(milk, one).toUri({}));
}

TEST_F(PictureFilesTest, Keep_their_content_while_a_change_settles)
{
    addLoaded(milk, one);
    write(file, two);
    EXPECT_EQ(uriOf(milk), Image(milk, one).toUri({}));
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, two)));
}

TEST_F(PictureFilesTest, Are_unknown_at_once_when_the_file_vanishes_and_announced_when_it_is_back)
{
    addLoaded(milk, one);
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_EQ(files.find(milk).value(), "");
    expectNothingAnnounced();
    EXPECT_EQ(files.find(milk).value(), "");
    write(file, one);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, one)));
}

TEST_F(PictureFilesTest, May_be_given_another_file)
{
    addLoaded(milk, one);
    const auto other = folder.filePath("b.png");
    write(other, two);
    files.add(milk, other);
    EXPECT_EQ(uriOf(milk), "");
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, two)));
    replace(file, svg("3")); // nobody's any more
    expectNothingAnnounced();
}

TEST_F(PictureFilesTest, Stay_as_they_are_when_they_are_given_the_same_file)
{
    addLoaded(milk, one);
    files.add(milk, QDir(folder.path()).filePath("./x/../a.png"));
    EXPECT_EQ(uriOf(milk), Image(milk, one).toUri({}));
}

TEST_F(PictureFilesTest, Are_found_by_a_name_that_starts_from_the_current_folder)
{
    write(file, one);
    files.add(milk, QDir::current().relativeFilePath(file));
    files.find(milk);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, one)));
}

TEST_F(PictureFilesTest, Are_not_announced_once_they_are_removed)
{
    addLoaded(milk, one);
    files.add(milkBarcode, file);
    files.remove(milk);
    EXPECT_FALSE(files.contains(milk));
    EXPECT_EQ(files.find(milk).value(), "");
    replace(file, two);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milkBarcode, two)));

    replace(file, one);
    files.remove(milkBarcode);
    expectNothingAnnounced();
}

TEST_F(PictureFilesTest, Are_announced_under_what_is_left_of_their_identifiers)
{
    addLoaded(milk, one);
    files.add(milkBarcode, file);
    files.remove(milk);
    files.find(milkBarcode);
    replace(file, two);
    EXPECT_EQ(allAnnounced(), QStringList(announcement(milkBarcode, two)));
}

TEST_F(PictureFilesTest, Are_not_announced_when_the_file_has_vanished_since_it_was_read)
{
    write(file, one);
    files.add(milk, file);
    files.find(milk);
    std::this_thread::sleep_for(quiet); // it is read, but without events not taken
    ASSERT_TRUE(QFile::remove(file));
    expectNothingAnnounced();
}

TEST_F(PictureFilesTest, Are_not_announced_when_they_are_removed_while_being_read)
{
    write(file, one);
    files.add(milk, file);
    files.find(milk);
    files.remove(milk);
    expectNothingAnnounced();
}

TEST_F(PictureFilesTest, May_be_removed_by_whoever_hears_of_the_first_of_them)
{
    QObject::connect(&files, &PictureFiles::loaded, &files, [&] {
        files.remove(milk);
        files.remove(milkBarcode);
    });
    write(file, one);
    files.add(milk, file);
    files.add(milkBarcode, file);
    files.find(milk);
    EXPECT_EQ(allAnnounced().size(), 1);
}

TEST_F(PictureFilesTest, Are_followed_when_they_are_added_again)
{
    addLoaded(milk, one);
    files.remove(milk);
    addLoaded(milk, one);
    replace(file, two);
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, two)));
}

TEST_F(PictureFilesTest, Are_not_given_as_they_were_before_the_file_vanished)
{
    addLoaded(milk, one);
    ASSERT_TRUE(QFile::remove(file));
    support::letPass(quiet);
    write(file, two);
    EXPECT_EQ(uriOf(milk), "");
    EXPECT_EQ(nextAnnounced(), QStringList(announcement(milk, two)));
}
