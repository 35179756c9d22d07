#include <register/CommandAnswer.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

TEST(CommandAnswer, Of_a_command_that_was_done_says_so)
{
    const CommandAnswer answer{3, "sell", {}};
    EXPECT_TRUE(answer.isOk());
    EXPECT_EQ(answer.toLine(), "{\"n\":3,\"do\":\"sell\",\"ok\":true}\n");
    EXPECT_EQ(answer.toJson(), support::json(R"({"n":3,"do":"sell","ok":true})"));
}

TEST(CommandAnswer, Of_a_command_that_was_not_done_says_why)
{
    const CommandAnswer answer{4, "sell", "no \"goods\""};
    EXPECT_FALSE(answer.isOk());
    EXPECT_EQ(answer.toLine(),
              "{\"n\":4,\"do\":\"sell\",\"ok\":false,\"error\":\"no \\\"goods\\\"\"}\n");
    EXPECT_EQ(answer.toJson()["error"].toString(), "no \"goods\"");
}
