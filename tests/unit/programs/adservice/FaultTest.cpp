#include <adservice/Fault.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

TEST(Fault, Has_a_name_each)
{
    const auto names = faultNames();
    EXPECT_EQ(names.size(), static_cast<int>(Fault::NoAnswer)) << "one a fault but for None";
    for (const auto &name : names) {
        const auto fault = faultOfName(name);
        ASSERT_TRUE(fault) << name.toStdString();
        EXPECT_EQ(nameOf(*fault), name);
        EXPECT_EQ(static_cast<int>(*fault), names.indexOf(name) + 1) << "order of the enumeration";
    }
}

TEST(Fault, Has_no_other_names)
{
    for (const auto *name : {"", "none", "Refuse", "refuse ", "iv"})
        EXPECT_FALSE(faultOfName(name)) << name;
    EXPECT_EQ(nameOf(Fault::None), "");
}
