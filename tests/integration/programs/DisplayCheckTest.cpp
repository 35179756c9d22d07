// The display as a judge of what is posted to it.

#include "ProgramFixture.h"

#include <support/RawClient.h>

#include <csignal>

namespace {

class DisplayCheck : public ProgramFixture
{
protected:
    DisplayCheck()
    {
        display = std::make_unique<Process>(QStringLiteral(DISPLAY_PROGRAM),
                                            QStringList{"--port", "0", "--plugin-url", pluginUrl,
                                                        "--check", "--report", path("report.json"),
                                                        "--record", path("record.jsonl")});
        EXPECT_TRUE(display->waitForOutputLines(1)) << display->errors().toStdString();
        const QRegularExpression address("^Display at http://127.0.0.1:(\\d+), ");
        displayPort = address.match(QString(display->outputLines().value(0))).captured(1).toInt();
    }

    int end()
    {
        display->signal(SIGTERM);
        return display->exitCode();
    }

    QJsonObject report() const { return support::json(read("report.json")); }

    int rightOf(const QString &type) const
    {
        const auto types = report().value(u"types").toObject();
        return types.value(type).toObject().value(u"right").toInt();
    }

    ProcessPtr display;
};

} // namespace

TEST_F(DisplayCheck, Passes_a_register)
{
    const auto cashRegister = startRegister(
        {"--config", config(displayPort), "--commands",
         write("commands.jsonl", "{\"do\":\"open\"}\n{\"do\":\"sell\",\"goods\":\"100\"}\n"
                                 "{\"do\":\"wait\",\"ms\":600}\n")});
    EXPECT_EQ(cashRegister->exitCode(), 0);
    EXPECT_EQ(end(), 0) << display->output().toStdString();
    EXPECT_TRUE(report().value(u"passed").toBool());
    EXPECT_EQ(rightOf("Configure"), 1);
    EXPECT_GE(rightOf("UpdateDocument"), 1);
}

TEST_F(DisplayCheck, Fails_what_breaks_the_contract_and_tells_at_once)
{
    support::RawClient client(displayPort);
    client.send(support::RawClient::request("/qrPayment", R"({"close":"yes"})"));
    EXPECT_EQ(client.answer().status, 200) << "a display that judges is a display";
    EXPECT_TRUE(support::waitFor([&] { return display->output().contains("message 1: /close: "); }))
        << display->output().toStdString();
    EXPECT_EQ(end(), 1);
    EXPECT_FALSE(report().value(u"passed").toBool(true));
}

TEST_F(DisplayCheck, Fails_when_nothing_came)
{
    EXPECT_EQ(end(), 1);
    EXPECT_TRUE(display->output().endsWith("Check: no message came, so nothing was checked\n"));
}

TEST(DisplayCheckUsage, A_report_needs_a_check)
{
    Process display(QStringLiteral(DISPLAY_PROGRAM), {"--report", "report.json"});
    EXPECT_EQ(display.exitCode(), 2);
    EXPECT_EQ(display.errors(), "display: --report needs --check: give both.\n");
}
