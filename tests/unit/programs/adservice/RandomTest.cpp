#include <adservice/Random.h>

#include <support/PrintQt.h>

#include <QSet>

#include <gtest/gtest.h>

TEST(Random, Gives_as_many_bytes_as_asked_for)
{
    for (const qsizetype count : {0, 1, 16, 1000})
        EXPECT_EQ(randomBytes(count).size(), count);
}

TEST(Random, Gives_others_each_time)
{
    EXPECT_NE(randomBytes(16), randomBytes(16));
}

TEST(Random, Uses_every_value_of_a_byte)
{
    const auto bytes = randomBytes(65'536); // one of 256 is missing with a chance of 1e-109
    EXPECT_EQ(QSet<char>(bytes.begin(), bytes.end()).size(), 256);
}
