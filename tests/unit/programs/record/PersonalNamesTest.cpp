#include <record/PersonalNames.h>

#include <gtest/gtest.h>

TEST(PersonalNames, Are_recognised_however_they_are_written)
{
    for (const auto *name :
         {"client", "clientName", "CLIENT_NAME", "buyer-email", "e_mail", "Phone", "telephone2",
          "cardNumber", "loyaltyLevel", "bonusSum", "inn", "clientINN", "INNOfClient",
          "customer.fio", "apiKey", "View.Ads:token", "authorization"})
        EXPECT_TRUE(isPersonalName(name)) << name;
}

TEST(PersonalNames, Are_no_others_that_look_alike)
{
    for (const auto *name : {"", "name", "inner", "beginning", "keyboard", "panel", "pinned",
                             "code", "barcode", "number", "discard", "disc_perc", "kind",
                             "View.Style:headerFontColor", "theme:name", "positions"})
        EXPECT_FALSE(isPersonalName(name)) << name;
}
