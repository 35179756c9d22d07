#include <doctor/EditDistance.h>

#include <gtest/gtest.h>

using doctor::editDistance;

TEST(EditDistance, Counts_the_mistakes)
{
    EXPECT_EQ(editDistance(u"", u""), 0);
    EXPECT_EQ(editDistance(u"", u"port"), 4);
    EXPECT_EQ(editDistance(u"port", u""), 4);
    EXPECT_EQ(editDistance(u"port", u"port"), 0);
    EXPECT_EQ(editDistance(u"port", u"pot"), 1);
    EXPECT_EQ(editDistance(u"port", u"sport"), 1);
    EXPECT_EQ(editDistance(u"port", u"part"), 1);
    EXPECT_EQ(editDistance(u"kitten", u"sitting"), 3);
    EXPECT_EQ(editDistance(u"abc", u"xyz"), 3);
}

TEST(EditDistance, Counts_exchanged_neighbours_once)
{
    EXPECT_EQ(editDistance(u"port", u"prot"), 1);
    EXPECT_EQ(editDistance(u"ab", u"ba"), 1);
    EXPECT_EQ(editDistance(u"timeout", u"itmeotu"), 2);
}

TEST(EditDistance, Is_the_same_both_ways_and_in_other_letters)
{
    EXPECT_EQ(editDistance(u"interval", u"intreval1"), editDistance(u"intreval1", u"interval"));
    EXPECT_EQ(editDistance(u"displayType", u"DisplayTYPE"), 0);
    EXPECT_EQ(editDistance(u"ПОРТ", u"порт"), 0);
}
