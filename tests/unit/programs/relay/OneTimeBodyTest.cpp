#include <relay/OneTimeBody.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

TEST(OneTimeBody, Is_read_from_its_beginning_to_its_end)
{
    OneTimeBody body("a body");
    EXPECT_TRUE(body.isSequential());
    EXPECT_EQ(body.bytesAvailable(), 6);
    EXPECT_EQ(body.read(2), "a ");
    EXPECT_EQ(body.bytesAvailable(), 4);
    EXPECT_EQ(body.readAll(), "body");
    EXPECT_TRUE(body.atEnd());
}

TEST(OneTimeBody, Cannot_be_read_again)
{
    OneTimeBody body("a body");
    body.readAll();
    EXPECT_FALSE(body.reset());
    EXPECT_EQ(body.readAll(), "");
}
