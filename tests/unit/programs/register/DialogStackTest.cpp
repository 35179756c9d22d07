#include <register/DialogStack.h>

#include <gtest/gtest.h>

TEST(DialogStack, Has_no_dialog_at_first)
{
    EXPECT_EQ(DialogStack().newest(), 0);
}

TEST(DialogStack, Gives_each_dialog_an_id_that_none_had_before)
{
    DialogStack dialogs;
    EXPECT_EQ(dialogs.open(), 1);
    EXPECT_EQ(dialogs.open(), 2);
    dialogs.close(2);
    EXPECT_EQ(dialogs.open(), 3);
}

TEST(DialogStack, Uncovers_the_dialog_before_when_the_newest_is_closed)
{
    DialogStack dialogs;
    const int first = dialogs.open();
    const int second = dialogs.open();
    const int third = dialogs.open();
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
    dialogs.open();
    dialogs.close(7);
    EXPECT_EQ(dialogs.newest(), 1);
}
