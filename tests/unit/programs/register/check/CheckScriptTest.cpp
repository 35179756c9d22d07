#include <register/check/CheckScript.h>

#include <common/MessageTypes.h>

#include <support/PrintQt.h>

#include <QSet>

#include <gtest/gtest.h>

TEST(CheckScript, Has_each_message_but_those_that_come_by_themselves)
{
    QSet<QString> types{"ShowAd", "ImageData"};
    for (const auto &step : checkScript()) {
        types.insert(step.type);
        EXPECT_TRUE(step.command.contains("do")) << step.what.toStdString();
        EXPECT_FALSE(step.what.isEmpty());
    }
    for (const auto &type : messageTypes)
        EXPECT_TRUE(types.remove(type.name)) << type.name;
    EXPECT_TRUE(types.isEmpty());
}

TEST(CheckScript, Has_no_two_messages_of_one_type_in_a_row)
{
    QString before;
    for (const auto &step : checkScript()) {
        EXPECT_NE(step.type, before) << step.what.toStdString();
        before = step.type;
    }
}
