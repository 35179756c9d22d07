#pragma once

#include <integration/programs/ProgramFixture.h>

#include <support/FreePort.h>
#include <support/OwnLoopback.h>

#include <csignal>

/// A recorder between the sample shop's register and a display, as processes, with their files in a
/// folder of the test's own.
class RecordedShop : public ProgramFixture
{
protected:
    /// A display that asks a recorder which is yet to come.
    ProcessPtr startAskingDisplay()
    {
        askPort = support::freePort();
        pluginUrl = QString("http://127.0.0.1:%1").arg(askPort);
        return startDisplay();
    }

    /// Starts a recorder in front of the display and of the plug-in.
    ProcessPtr startRecorder(const QStringList &options)
    {
        auto recorder = std::make_unique<Process>(
            QStringLiteral(RECORD),
            QStringList{"--display", QString("http://127.0.0.1:%1").arg(displayPort), "--port", "0",
                        "--plugin-url", QString("http://%1:38081").arg(pluginAddress),
                        "--plugin-port", QString::number(askPort)} +
                options);
        EXPECT_TRUE(recorder->waitForErrors("requests go on to"))
            << recorder->errors().toStdString();
        const QRegularExpression setting("ViewConnector:server to http://127.0.0.1:(\\d+);");
        messagePort = setting.match(QString(recorder->errors())).captured(1).toInt();
        EXPECT_NE(messagePort, 0) << recorder->errors().toStdString();
        return recorder;
    }

    /// Plays commands at the sample shop's register, with its messages to the recorder.
    void playShop(const QByteArray &commands)
    {
        QFile file(QStringLiteral(DEMO "/shop.toml"));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        auto settings = QString::fromUtf8(file.readAll());
        settings.replace("127.0.0.1:38080", QString("127.0.0.1:%1").arg(messagePort));
        settings.replace("[HttpServer]",
                         QString("[HttpServer]\naddress = \"%1\"").arg(pluginAddress));
        settings.replace("goods.toml", QStringLiteral(DEMO "/goods.toml"));
        settings.replace("http://127.0.0.1:38083/subscription", "");
        settings.replace("http://127.0.0.1:38083/", "file://" DEMO "/");
        settings.replace("time = 2", "time = 1");
        settings.replace("interval = 250", "interval = 50");
        const auto cashRegister = startRegister({"--config", write("shop.toml", settings.toUtf8()),
                                                 "--commands", write("commands.jsonl", commands),
                                                 "--images", QStringLiteral(DEMO "/pictures")});
        EXPECT_TRUE(
            support::waitFor([&] { return !cashRegister->isRunning(); }, std::chrono::seconds(60)));
        EXPECT_EQ(cashRegister->exitCode(), 0) << cashRegister->errors().toStdString();
    }

    static void stop(Process &process)
    {
        process.signal(SIGTERM);
        EXPECT_EQ(process.exitCode(), 0) << process.errors().toStdString();
    }

    /// The lines of a recording in one direction.
    static QList<QJsonObject> linesTo(const QString &side, const QByteArray &recording)
    {
        auto lines = support::jsonLines(recording);
        lines.removeIf([&](const QJsonObject &line) { return line["to"] != side; });
        return lines;
    }

    const QString pluginAddress = support::ownLoopbackAddress();
    int messagePort = 0; // where the plug-in posts to
    int askPort = 0;     // where the display asks; 0 if it does not
};
