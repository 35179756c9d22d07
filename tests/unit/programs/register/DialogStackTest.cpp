#include <register/DialogStack.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

TEST(DialogStack, Has_no_dialog_at_first)
{
    EXPECT_EQ(DialogStack().newest(), 0);
}

TEST(DialogStack, Gives_each_dialog_an_id_that_none_had_before)
{
    DialogStack dialogs;
    EXPECT_EQ(dialogs.open("qr"), 1);
    EXPECT_EQ(dialogs.open("qr"), 2);
    dialogs.close(2);
    EXPECT_EQ(dialogs.open("qr"), 3);
}

TEST(DialogStack, Uncovers_the_dialog_before_when_the_newest_is_closed)
{
    DialogStack dialogs;
    const int first = dialogs.open("qr");
    const int second = dialogs.open("qr");
    const int third = dialogs.open("qr");
    EXPECT_EQ(dialogs.newest(), third);
    dialogs.close(second);
    EXPECT_EQ(dialogs.newest(), third);
    dialogs.close(third);
    EXPECT_EQ(dialogs.newest(), first);
    dialogs.close(first);
    EXPECT_EQ(dialogs.newest(), 0);
}

TEST(DialogStack, Ignores_the_closing_of_a_dialog_that_is_not_open)
{
    DialogStack dialogs;
    dialogs.open("qr");
    dialogs.close(7);
    EXPECT_EQ(dialogs.newest(), 1);
}

TEST(DialogStack, Tells_which_are_open_the_newest_last)
{
    DialogStack dialogs;
    EXPECT_TRUE(dialogs.all().isEmpty());
    dialogs.open("qr");
    dialogs.open("prices");
    dialogs.open("qr");
    dialogs.close(1);
    ASSERT_EQ(dialogs.all().size(), 2);
    EXPECT_EQ(dialogs.all()[0].id, 2);
    EXPECT_EQ(dialogs.all()[0].kind, "prices");
    EXPECT_EQ(dialogs.all()[1].id, 3);
    EXPECT_EQ(dialogs.all()[1].kind, "qr");
}
