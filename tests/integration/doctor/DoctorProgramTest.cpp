#include "DoctorFixture.h"

#include <support/ScriptedServer.h>

#include <QTcpServer>

#include <csignal>

namespace {

class DoctorProgram : public DoctorFixture
{
protected:
    /// What the doctor prints for people; it must end with `code`.
    QString print(int code, const QStringList &options = {})
    {
        Process doctor(QStringLiteral(DOCTOR), QStringList{"--config", shop()} + options);
        EXPECT_EQ(doctor.exitCode(), code) << doctor.errors().toStdString();
        return QString::fromUtf8(doctor.output());
    }
};

bool hasCyrillic(const QString &text)
{
    static const QRegularExpression letter("[а-яёА-ЯЁ]");
    return letter.match(text).hasMatch();
}

} // namespace

TEST_F(DoctorProgram, Finds_nothing_wrong_with_a_healthy_shop_and_shows_nothing_on_the_display)
{
    const auto display = startDisplay();
    const auto service = startAdService();
    const auto report = examine(0);
    EXPECT_EQ(problems(report), QList<QJsonObject>());
    EXPECT_TRUE(first(report, "port")["free"].toBool());
    EXPECT_EQ(first(report, "display")["httpStatus"].toInt(), 200);
    display->signal(SIGTERM);
    EXPECT_EQ(display->exitCode(), 0);
    EXPECT_EQ(record().size(), 0);
}

TEST_F(DoctorProgram, Knows_the_port_of_a_running_register)
{
    const auto display = startDisplay();
    const auto service = startAdService();
    const auto till = startRegister({"--config", shop(), "--stay"});
    ASSERT_TRUE(till->waitForErrors("HTTP-сервер: открыт"));
    const auto port = first(examine(0), "port");
    EXPECT_EQ(port["status"].toString(), "ok");
    EXPECT_EQ(port["owner"].toString(), "register");
    EXPECT_FALSE(port["free"].toBool(true));
    EXPECT_TRUE(till->isRunning());
}

TEST_F(DoctorProgram, Has_a_finding_of_each_check_and_the_settings)
{
    const auto report = examine(1);
    QStringList checks;
    for (const auto &finding : findings(report)) {
        checks.append(finding["check"].toString());
        EXPECT_FALSE(finding["message"].toString().isEmpty());
        EXPECT_EQ(finding.contains("remedy"), finding["status"].toString() != "ok");
    }
    checks.removeDuplicates();
    EXPECT_EQ(checks, (QStringList{"plugin", "settings", "port", "display", "timetable", "goods",
                                   "pictures", "ads", "clock"}));
    EXPECT_GT(report["settings"].toArray().size(), 70);
}

TEST_F(DoctorProgram, Fails_when_the_display_is_down_and_tells_the_remedy)
{
    const auto service = startAdService();
    const auto found = problems(examine(1));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found.front()["check"].toString(), "display");
    EXPECT_TRUE(found.front()["remedy"].toString().contains("viewconnector-display"));
    EXPECT_TRUE(print(1).contains("systemctl --user restart viewconnector-display"));
}

TEST_F(DoctorProgram, Names_another_program_that_holds_the_port)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress(QString(pluginAddress))));
    pluginPort = other.serverPort();
    const auto port = first(examine(1), "port");
    EXPECT_EQ(port["status"].toString(), "failed");
    EXPECT_EQ(port["pid"].toInteger(), QCoreApplication::applicationPid());
    EXPECT_TRUE(QString("doctor_program_tests").startsWith(port["owner"].toString()));
}

TEST_F(DoctorProgram, Names_the_nearest_key_for_a_misspelt_one)
{
    const auto display = startDisplay();
    const auto service = startAdService();
    moreSettings = "showQRcode = true\n"; // in [View.Logic], which is the last
    const auto found = problems(examine(0));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found.front()["status"].toString(), "warning");
    EXPECT_EQ(found.front()["key"].toString(), "View.Logic:showQRcode");
    EXPECT_EQ(found.front()["nearest"].toString(), "View.Logic:showQrCode");
}

TEST_F(DoctorProgram, Speaks_the_language_of_the_settings_or_that_which_is_asked_for)
{
    EXPECT_TRUE(hasCyrillic(print(1)));
    const auto english = print(1, {"--language", "en"});
    // A label of the receipt is in Russian by default, whatever the doctor speaks.
    const auto label = QStringLiteral("positionDiscountLabelMask = Скидка");
    EXPECT_FALSE(hasCyrillic(QString(english).remove(label))) << english.toStdString();
    const auto russian = print(1, {"--language", "ru"});
    EXPECT_EQ(russian.count('\n'), english.count('\n')) << "each finding is there in both";
    EXPECT_TRUE(english.trimmed().split('\n').last().startsWith("Summary: "));
}

TEST_F(DoctorProgram, Names_line_and_column_of_settings_that_are_broken)
{
    const auto broken = write("broken.toml", "[Host]\nlanguage = \"ru\"\n\n[View\nx = 1\n");
    for (const auto &options : {QStringList(), QStringList{"--json"}}) {
        Process doctor(QStringLiteral(DOCTOR), QStringList{"--config", broken} + options);
        EXPECT_EQ(doctor.exitCode(), 2);
        EXPECT_EQ(doctor.output(), "");
        EXPECT_TRUE(
            doctor.errors().startsWith("viewconnector-doctor: " + broken.toUtf8() + ":4:6: "))
            << doctor.errors().toStdString();
    }
}

TEST_F(DoctorProgram, Refuses_a_bundle_that_cannot_be_written_after_the_report)
{
    Process doctor(QStringLiteral(DOCTOR),
                   {"--config", shop(), "--bundle", path("none/bundle.tar.gz")});
    EXPECT_EQ(doctor.exitCode(), 2);
    EXPECT_TRUE(doctor.output().contains("Итог: "));
    EXPECT_TRUE(doctor.errors().contains("viewconnector-doctor: --bundle " +
                                         path("none/bundle.tar.gz").toUtf8()));
}

TEST_F(DoctorProgram, Ends_in_order_when_it_is_told_to)
{
    support::ScriptedServer display;
    display.answer(support::ScriptedAnswer::blackHole());
    displayPort = display.port();
    Process doctor(QStringLiteral(DOCTOR), {"--config", shop()});
    ASSERT_TRUE(support::waitFor([&] { return display.requestCount() == 1; }));
    doctor.signal(SIGTERM);
    EXPECT_EQ(doctor.exitCode(), 1);
    EXPECT_EQ(doctor.output(), "");
    EXPECT_EQ(doctor.errors(), "viewconnector-doctor: interrupted before all was checked.\n");
}
