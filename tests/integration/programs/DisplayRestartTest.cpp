#include "ProgramFixture.h"

#include <csignal>

namespace {

class DisplayRestart : public ProgramFixture
{
};

} // namespace

TEST_F(DisplayRestart, Brings_the_newest_of_each_type_that_waits)
{
    auto display = startDisplay();
    const int port = displayPort;
    const auto cashRegister = startRegister({"--config", config(port), "--commands", "-"});
    ASSERT_TRUE(waitForRecord(1)); // the configuration
    // A post after it tells that it is acknowledged; otherwise it would be sent again.
    cashRegister->write("{\"do\":\"content\",\"text\":\"older\"}\n");
    ASSERT_TRUE(waitForRecord(2));
    display->signal(SIGKILL);
    EXPECT_EQ(display->exitCode(), -1);
    EXPECT_TRUE(display->wasKilled());

    cashRegister->write(R"({"do":"content","text":"old"}
{"do":"open","number":1}
{"do":"prices"}
{"do":"open","number":2}
{"do":"content","text":"new"}
{"do":"sell","goods":"100"}
{"do":"scroll","to":"up"}
{"do":"draft"}
)");
    ASSERT_TRUE(cashRegister->waitForOutputLines(9));
    // Some posts fail meanwhile; the log says once that the display is away, and why.
    support::letPass(std::chrono::milliseconds(300));
    EXPECT_EQ(cashRegister->errors().count(" ERROR "), 1) << cashRegister->errors().toStdString();

    display = startDisplay(port);
    ASSERT_TRUE(waitForRecord(4));
    support::letPass(std::chrono::milliseconds(300)); // nothing more may come
    const auto messages = record();
    ASSERT_EQ(messages.size(), 4);
    EXPECT_EQ(messages[0]["path"].toString(), "/updateDocument");
    EXPECT_EQ(messages[0]["body"]["number"].toInt(), 2);
    EXPECT_EQ(messages[0]["body"]["total"].toInt(), 1000);
    EXPECT_EQ(messages[1]["path"].toString(), "/priceList");
    EXPECT_EQ(messages[1]["body"].toObject(), (QJsonObject{{"scroll", "up"}}));
    EXPECT_EQ(messages[2]["path"].toString(), "/content");
    EXPECT_EQ(messages[2]["body"]["data"].toString(), "new");
    EXPECT_EQ(messages[3]["path"].toString(), "/paymentdraft");

    cashRegister->closeInput();
    EXPECT_EQ(cashRegister->exitCode(), 0);
}
