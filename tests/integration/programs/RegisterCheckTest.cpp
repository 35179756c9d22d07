// The register as a judge of somebody's display application.

#include "ProgramFixture.h"

#include <support/RawClient.h>
#include <support/ScriptedServer.h>

#include <QJsonArray>
#include <QTcpServer>
#include <QTcpSocket>

#include <csignal>
#include <mutex>
#include <thread>
#include <vector>

namespace {

class RegisterCheck : public ProgramFixture
{
protected:
    ProcessPtr check(const QUrl &display, int requestPort = 0)
    {
        return startRegister({"--check", display.toString(), "--request-port",
                              QString::number(requestPort), "--report", path("report.json")});
    }

    QJsonObject report() const { return support::json(read("report.json")); }

    /// The outcomes and messages of a type's checks.
    QStringList messagesOf(const QString &type) const
    {
        QStringList messages;
        const auto checks = report().value(u"checks").toArray();
        for (const auto &entry : checks) {
            if (entry[u"check"] == type)
                messages.append(entry[u"outcome"].toString() + ": " + entry[u"message"].toString());
        }
        return messages;
    }
};

/// A port for one test; the display must know it before the register has it.
int freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

/// Reports that the advertisement was shown, again and again: whenever the register may send, the
/// next advertisement waits.
void reportShown(int requestPort, const std::stop_token &stop)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(requestPort));
    socket.waitForConnected();
    const auto report =
        support::RawClient::request("/", R"({"type":"result","name":"adResult","value":true})");
    while (!stop.stop_requested() && socket.state() == QTcpSocket::ConnectedState) {
        socket.write(report);
        socket.waitForReadyRead();
        socket.readAll();
    }
}

} // namespace

TEST_F(RegisterCheck, Passes_the_display_here)
{
    const int requestPort = freePort();
    pluginUrl = QStringLiteral("http://127.0.0.1:%1").arg(requestPort);
    const auto display = startDisplay();
    const auto checking =
        check(QUrl(QStringLiteral("http://127.0.0.1:%1").arg(displayPort)), requestPort);
    EXPECT_EQ(checking->exitCode(), 0) << checking->output().toStdString();
    EXPECT_EQ(report().value(u"failed").toInt(), 0);
    EXPECT_EQ(report().value(u"skipped").toInt(), 0);
    for (const auto *type : {"Configure", "UpdateDocument", "QrPayment", "ShowAd", "PriceList",
                             "ImageData", "Content", "PaymentDraft", "getImage", "adResult"})
        EXPECT_FALSE(messagesOf(type).isEmpty()) << type;
    const auto passed = QStringLiteral("%1 passed, 0 failed, 0 skipped")
                            .arg(report().value(u"checks").toArray().size());
    EXPECT_EQ(QString(checking->outputLines().constLast()), passed);
}

TEST_F(RegisterCheck, Tells_for_each_message_how_a_display_fails_it)
{
    support::ScriptedServer display;
    display.answerBy([](const support::ScriptedServer::Request &request) {
        using Answer = support::ScriptedAnswer;
        if (request.path == "/configure")
            return Answer::status(404);
        if (request.path == "/updateDocument")
            return Answer::status(500);
        if (request.path == "/qrPayment")
            return Answer::closed();
        if (request.path == "/priceList")
            return Answer::status(302);
        if (request.path == "/paymentdraft")
            return Answer::slow(std::chrono::milliseconds(1500));
        if (request.path == "/image")
            return Answer::status(413);
        if (request.path == "/showAD")
            return Answer::status(405);
        return Answer::ok();
    });
    const auto checking = check(display.url());
    EXPECT_TRUE(support::waitFor([&] { return !checking->isRunning(); }, std::chrono::seconds(40)));
    EXPECT_EQ(checking->exitCode(), 1);
    EXPECT_EQ(messagesOf("Configure"), QStringList{"failed: answered 404"});
    EXPECT_EQ(messagesOf("UpdateDocument").count("failed: answered 500"), 7);
    EXPECT_EQ(messagesOf("QrPayment").value(0),
              "failed: the connection was closed without an answer");
    EXPECT_EQ(messagesOf("PriceList").value(0), "failed: answered 302");
    EXPECT_EQ(messagesOf("PaymentDraft").value(0), "failed: no whole answer within 1 s");
    EXPECT_EQ(messagesOf("ImageData").value(0), "failed: answered 413");
    EXPECT_EQ(messagesOf("ShowAd"), QStringList{"failed: answered 405"});
    EXPECT_EQ(messagesOf("adResult"),
              QStringList{"failed: 0 of the 2 advertisements were reported"});
    EXPECT_EQ(messagesOf("getImage"), QStringList{"skipped: none was asked for"});
    EXPECT_TRUE(messagesOf("Content").value(0).startsWith("passed: "));
    EXPECT_TRUE(checking->output().contains("-> Serve POST /configure"));
    EXPECT_EQ(checking->output().count("-> Allow the method POST on /showAD."), 1);
}

TEST_F(RegisterCheck, Fails_a_display_that_lets_other_messages_starve)
{
    const int requestPort = freePort();
    std::mutex mutex;
    std::jthread reports;
    support::ScriptedServer display;
    display.answerBy([&, requestPort](const support::ScriptedServer::Request &request) {
        const std::lock_guard lock(mutex);
        if (request.path == "/showAD" && !reports.joinable())
            reports =
                std::jthread([=](const std::stop_token &stop) { reportShown(requestPort, stop); });
        return support::ScriptedAnswer::ok();
    });
    const auto checking = check(display.url(), requestPort);
    EXPECT_EQ(checking->exitCode(), 1) << checking->output().toStdString();
    EXPECT_TRUE(messagesOf("adResult")
                    .value(0)
                    .startsWith("failed: an advertisement for 1 s was reported as shown after "))
        << messagesOf("adResult").value(0).toStdString();
    const auto requests = display.requests();
    EXPECT_LT(std::count_if(requests.begin(), requests.end(),
                            [](const auto &request) { return request.path == "/showAD"; }),
              100); // it is not watched until the patience for a step ends
}

TEST_F(RegisterCheck, Ends_at_once_where_nobody_listens)
{
    const auto checking = check(QUrl("http://127.0.0.1:1"));
    EXPECT_EQ(checking->exitCode(), 1);
    EXPECT_EQ(messagesOf("Configure"), QStringList{"failed: nobody listens there"});
    EXPECT_EQ(report().value(u"passed").toInt(), 0);
    EXPECT_GT(report().value(u"skipped").toInt(), 10);
}

TEST_F(RegisterCheck, That_is_ended_is_not_passed)
{
    support::ScriptedServer display;
    const auto checking = check(display.url());
    ASSERT_TRUE(checking->waitForOutputLines(3));
    checking->signal(SIGTERM);
    EXPECT_EQ(checking->exitCode(), 1);
}

TEST_F(RegisterCheck, Names_a_port_that_is_taken)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    const auto checking = check(QUrl("http://127.0.0.1:1"), other.serverPort());
    EXPECT_EQ(checking->exitCode(), 2);
    EXPECT_TRUE(checking->errors().contains("--request-port")) << checking->errors().toStdString();
    EXPECT_TRUE(checking->errors().contains("tell the display"));
}
