#include "Complete.h"

#include <doctor/PortCheck.h>

#include <support/OwnLoopback.h>
#include <support/ScriptedServer.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>

using namespace doctor;
using support::ScriptedAnswer;

namespace {

class PortCheck : public testing::Test
{
protected:
    Findings check() const { return complete(checkPort(plugin)); }

    /// The only finding, which has failed; in English.
    std::string failure() const
    {
        const auto findings = check();
        EXPECT_EQ(statuses(findings), QStringList{"failed"});
        return english(findings.front()).toStdString();
    }

    /// What the kernel shows of the ports, but not of the processes.
    QString procWithoutProcesses()
    {
        QDir(proc.path()).mkpath("net");
        QFile kernels("/proc/net/tcp");
        QFile file(proc.filePath("net/tcp"));
        EXPECT_TRUE(kernels.open(QIODevice::ReadOnly) && file.open(QIODevice::WriteOnly));
        file.write(kernels.readAll());
        return proc.path();
    }

    QTemporaryDir proc;
    PluginPort plugin{support::ownLoopbackAddress(), 38081, "not-loaded.so",
                      QUrl("http://127.0.0.1:38080")};
};

} // namespace

TEST_F(PortCheck, Finds_a_free_port_and_leaves_it_free)
{
    const auto findings = check();
    EXPECT_EQ(statuses(findings), QStringList{"ok"});
    EXPECT_TRUE(findings.front().details["free"].toBool());
    EXPECT_EQ(findings.front().details["port"].toInt(), 38081);
    EXPECT_TRUE(QTcpServer().listen(QHostAddress(plugin.address), 38081));
}

TEST_F(PortCheck, Names_another_program_that_holds_the_port)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress(plugin.address)));
    plugin.port = other.serverPort();
    const auto pid = QString::number(QCoreApplication::applicationPid());
    EXPECT_THAT(failure(), testing::HasSubstr("another program: doctor_tests (process " +
                                              pid.toStdString() + ")"));
    const auto details = check().front().details;
    EXPECT_EQ(details["owner"].toString(), "doctor_tests");
    EXPECT_EQ(details["pid"].toInteger(), pid.toLongLong());
    EXPECT_FALSE(details["free"].toBool(true));
}

TEST_F(PortCheck, Is_content_with_a_program_that_has_loaded_the_plugin)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress(plugin.address)));
    plugin.port = other.serverPort();
    plugin.pluginName = "doctor_tests"; // which is mapped into this process
    EXPECT_EQ(statuses(check()), QStringList{"ok"});
}

TEST_F(PortCheck, Tells_how_to_see_a_hidden_owner)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    plugin.address = "127.0.0.1";
    plugin.port = other.serverPort();
    plugin.proc = procWithoutProcesses();
    EXPECT_THAT(failure(), testing::HasSubstr("this user may not see by whom"));
    EXPECT_TRUE(check().front().remedy.in(Language::English).contains("sudo ss -ltnp"));
}

TEST_F(PortCheck, Knows_the_plugin_of_another_user_by_its_answer)
{
    support::ScriptedServer server;
    server.answer(ScriptedAnswer::ok(""));
    plugin.address = "127.0.0.1";
    plugin.port = server.port();
    plugin.proc = procWithoutProcesses();
    EXPECT_EQ(statuses(check()), QStringList{"ok"});
    server.answer(ScriptedAnswer::ok("{}"));
    EXPECT_EQ(statuses(check()), QStringList{"failed"}) << "the plug-in's answers are empty";
}

TEST_F(PortCheck, Fails_what_is_no_port)
{
    for (const int port : {-1, 65536}) {
        plugin.port = port;
        EXPECT_THAT(failure(), testing::HasSubstr("is no port"));
    }
}

TEST_F(PortCheck, Warns_of_a_port_that_the_display_cannot_know)
{
    plugin.port = 0;
    EXPECT_EQ(statuses(check()), QStringList{"warning"});
}

TEST_F(PortCheck, Fails_an_address_that_is_none_or_of_another_machine)
{
    plugin.address = "here";
    EXPECT_THAT(failure(), testing::HasSubstr("no IPv4 address"));
    plugin.address = "::1";
    EXPECT_THAT(failure(), testing::HasSubstr("no IPv4 address"));
    plugin.address = "203.0.113.1";
    EXPECT_THAT(failure(), testing::HasSubstr("no address of this machine"));
}

TEST_F(PortCheck, Fails_the_port_of_the_display)
{
    plugin.port = 38080;
    EXPECT_THAT(failure(), testing::HasSubstr("the same port 38080"));
    plugin.display = QUrl("http://localhost:38080");
    EXPECT_THAT(failure(), testing::HasSubstr("the same port 38080"));
    plugin.display = QUrl("http://203.0.113.1:38080");
    EXPECT_FALSE(hasFailed(check())) << "on another machine";
}

TEST_F(PortCheck, Warns_of_a_display_elsewhere_that_cannot_ask_back)
{
    plugin.display = QUrl("http://203.0.113.1:38080");
    EXPECT_EQ(statuses(check()), (QStringList{"ok", "warning"}));
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::AnyIPv4));
    plugin.address = "0.0.0.0";
    plugin.port = other.serverPort();
    other.close();
    EXPECT_EQ(statuses(check()), QStringList{"ok"});
}
