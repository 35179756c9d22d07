#include <support/KeepsToContract.h>
#include <support/OwnLoopback.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

/// A display, an ad service and a register as processes, with their files in a folder of the test's
/// own.
class Shop : public testing::Test
{
protected:
    Shop()
    {
        for (auto *process : {&display, &adService, &cashRegister})
            process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }

    ~Shop() override
    {
        for (auto *process : {&cashRegister, &adService, &display}) {
            process->kill();
            process->waitForFinished();
        }
    }

    /// Starts the display and returns its port; 0 if it does not say one.
    int startDisplay(int port)
    {
        display.start(QStringLiteral(DISPLAY_PROGRAM),
                      {"--port", QString::number(port), "--record", path("record.jsonl"),
                       "--plugin-url", "http://" + pluginAddress + ":38081"});
        return portOf(display, output);
    }

    /// Starts an ad service whose stream comes after some seconds and lasts some seconds.
    int startAdService()
    {
        adService.start(QStringLiteral(AD_SERVICE),
                        {"--port", "0", "--ads", QStringLiteral(DEMO "/ads"), "--answer-after",
                         "5000", "--stream-seconds", "4"});
        QString printed;
        return portOf(adService, printed);
    }

    /// A connection of another test that had this port as its own end keeps it for a minute.
    static bool waitUntilFree(quint16 port)
    {
        return support::waitFor([&] { return QTcpServer().listen(QHostAddress::LocalHost, port); },
                                70s);
    }

    /// The port of the address in what a server prints first; 0 if it does not say one.
    static int portOf(QProcess &server, QString &printed)
    {
        const QRegularExpression address(QStringLiteral("http://127.0.0.1:(\\d+)[,\\s]"));
        QRegularExpressionMatch match;
        support::waitFor([&] {
            server.waitForReadyRead(10);
            printed += QString::fromUtf8(server.readAllStandardOutput());
            match = address.match(printed);
            return match.hasMatch() || server.state() == QProcess::NotRunning;
        });
        return match.captured(1).toInt();
    }

    void startRegister(const QString &configFile, const QString &commandsFile)
    {
        cashRegister.setStandardOutputFile(path("answers.jsonl"));
        cashRegister.start(QStringLiteral(REGISTER),
                           {"--config", configFile, "--commands", commandsFile, "--images",
                            QStringLiteral(DEMO "/pictures"), "--report", path("report.json")});
    }

    void stopDisplay()
    {
        display.terminate();
        ASSERT_TRUE(display.waitForFinished());
        EXPECT_EQ(display.exitCode(), 0);
    }

    QString path(const char *name) const { return folder.filePath(QString::fromLatin1(name)); }

    QByteArray read(const QString &fileName) const
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(fileName);
        return file.readAll();
    }

    void write(const QString &fileName, const QByteArray &content) const
    {
        QFile file(fileName);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    /// The sample settings with this test's address of the plug-in and ports of the others. Without
    /// an ad service nobody is at its port.
    QString sampleConfig(int displayPort, int adPort = 1)
    {
        auto config = QString::fromUtf8(read(QStringLiteral(DEMO "/shop.toml")));
        config.replace(QStringLiteral("127.0.0.1:38080"),
                       QStringLiteral("127.0.0.1:%1").arg(displayPort));
        config.replace(QStringLiteral("[HttpServer]"),
                       QStringLiteral("[HttpServer]\naddress = \"%1\"").arg(pluginAddress));
        config.replace(QStringLiteral("38083"), QString::number(adPort));
        config.replace(QStringLiteral("goods.toml"), QStringLiteral(DEMO "/goods.toml"));
        write(path("shop.toml"), config.toUtf8());
        return path("shop.toml");
    }

    QList<QJsonObject> record() const
    {
        QList<QJsonObject> lines;
        for (const auto &line : read(path("record.jsonl")).split('\n')) {
            if (!line.isEmpty())
                lines.append(QJsonDocument::fromJson(line).object());
        }
        return lines;
    }

    QStringList paths() const
    {
        QStringList paths;
        for (const auto &line : record())
            paths.append(line["path"].toString());
        return paths;
    }

    /// What the display was told to show: names in the settings, "stream" for a stream.
    QStringList advertisements() const
    {
        QStringList names;
        for (const auto &line : record()) {
            if (line["path"].toString() == "/showAD")
                names.append(line["body"]["id"].toString("stream"));
        }
        return names;
    }

    QTemporaryDir folder;
    QString pluginAddress = support::ownLoopbackAddress();
    QProcess display;
    QProcess adService;
    QProcess cashRegister;
    QString output; // of the display
};

} // namespace

TEST_F(Shop, Is_played_and_leaves_the_display_with_the_registers_own_receipt)
{
    const int port = startDisplay(0);
    ASSERT_NE(port, 0) << qPrintable(output);
    const int adPort = startAdService();
    ASSERT_NE(adPort, 0);
    startRegister(sampleConfig(port, adPort), QStringLiteral(DEMO "/shop.jsonl"));
    ASSERT_TRUE(cashRegister.waitForFinished(90'000));
    EXPECT_EQ(cashRegister.exitCode(), 0);
    EXPECT_FALSE(read(path("answers.jsonl")).contains("\"ok\":false"));
    stopDisplay();

    QProcess summary;
    summary.start(QStringLiteral(SUMMARY),
                  {"--report", path("report.json"), "--record", path("record.jsonl")});
    ASSERT_TRUE(summary.waitForFinished());
    EXPECT_EQ(summary.exitCode(), 0) << summary.readAllStandardOutput().toStdString();

    for (const auto &line : record()) {
        const auto body = line["body"].toObject();
        EXPECT_EQ(line["status"].toInt(), 200);
        support::expectPostKeepsToContract(line["path"].toString(), body);
        if (line["path"].toString() == "/updateDocument")
            support::expectKeepsToContract("SampleReceipt", body);
    }
    EXPECT_EQ(paths().constFirst(), "/configure");
    for (const auto *each : {"/updateDocument", "/qrPayment", "/priceList", "/content",
                             "/paymentdraft", "/showAD", "/image"})
        EXPECT_TRUE(paths().contains(QString::fromLatin1(each))) << each;
    EXPECT_EQ(paths().count("/configure"), 1);

    // Pictures: of every article that was sold, each with its content.
    output += QString::fromUtf8(display.readAllStandardOutput());
    const QRegularExpression pictures("Pictures: (\\d+) asked for, (\\d+) came, 0 said");
    const auto counts = pictures.match(output);
    EXPECT_GE(counts.captured(1).toInt(), 20) << qPrintable(output);
    EXPECT_EQ(counts.captured(2), counts.captured(1)) << qPrintable(output);

    // Advertisements: the timetable, the stream in its place, and the timetable from its first.
    const auto shown = advertisements();
    const auto stream = shown.indexOf("stream");
    EXPECT_EQ(shown.mid(0, 2), (QStringList{"coffee", "bread"}));
    EXPECT_GE(stream, 2);
    EXPECT_EQ(shown.mid(stream + 1, 4), (QStringList{"coffee", "bread", "fruit", "coffee"}));
    EXPECT_EQ(shown.count("stream"), 1);
}

TEST_F(Shop, Works_without_any_settings_on_the_default_ports)
{
    pluginAddress = "127.0.0.1";
    ASSERT_TRUE(waitUntilFree(38080) && waitUntilFree(38081));
    ASSERT_EQ(startDisplay(38080), 38080) << "is port 38080 in use?";
    write(path("empty.toml"), {});
    write(path("commands.jsonl"), R"({"do":"wait","ms":300}
{"do":"document","properties":{"number":7,"waybillNumber":"W"}}
{"do":"wait","ms":1500}
)");
    startRegister(path("empty.toml"), path("commands.jsonl"));

    ASSERT_TRUE(support::waitFor([&] { return record().size() == 2; }));
    QProcess request; // the plug-in's own port answers, whatever it is asked
    request.start(QStringLiteral("bash"),
                  {"-c",
                   "exec 3<>/dev/tcp/127.0.0.1/38081; printf 'GET / HTTP/1.0\\r\\n\\r\\n' >&3; "
                   "head -n 1 <&3"});
    ASSERT_TRUE(request.waitForFinished());
    EXPECT_TRUE(request.readAllStandardOutput().contains(" 200 OK"));

    ASSERT_TRUE(cashRegister.waitForFinished());
    EXPECT_EQ(cashRegister.exitCode(), 0);
    const auto messages = record();
    ASSERT_EQ(messages.size(), 2);
    EXPECT_EQ(messages[0]["body"].toObject().size(), 52);
    EXPECT_EQ(messages[1]["body"].toObject(), (QJsonObject{{"number", 7}}));
    stopDisplay();
}

TEST_F(Shop, A_display_that_was_killed_gets_the_newest_state_when_it_is_back)
{
    const int port = startDisplay(0);
    ASSERT_NE(port, 0);
    write(path("commands.jsonl"), R"({"do":"open"}
{"do":"sell","goods":"100"}
{"do":"wait","ms":1500}
{"do":"sell","goods":"101"}
{"do":"prices","goods":["100"]}
{"do":"sell","goods":"102"}
{"do":"wait","ms":4000}
)");
    startRegister(sampleConfig(port), path("commands.jsonl"));
    ASSERT_TRUE(support::waitFor([&] { return paths().contains("/updateDocument"); }));
    display.kill();
    display.waitForFinished();
    support::letPass(1700ms); // the rest of the sale happens meanwhile
    output.clear();
    ASSERT_EQ(startDisplay(port), port);

    ASSERT_TRUE(support::waitFor([&] { return paths().contains("/priceList"); }));
    const auto messages = record();
    EXPECT_EQ(messages[0]["path"].toString(), "/updateDocument");
    EXPECT_EQ(messages[0]["body"]["positions"].toArray().size(), 3);
    ASSERT_TRUE(cashRegister.waitForFinished());
    EXPECT_EQ(cashRegister.exitCode(), 0);
    EXPECT_EQ(paths().count("/updateDocument"), 1);
    EXPECT_EQ(paths().count("/priceList"), 1);
}
