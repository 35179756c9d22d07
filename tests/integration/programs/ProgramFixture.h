#pragma once

#include "Process.h"

#include <support/Json.h>
#include <support/PrintQt.h>

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

/// Programs with their files in a folder of the test's own.
class ProgramFixture : public testing::Test
{
protected:
    using ProcessPtr = std::unique_ptr<Process>;

    QString path(const QString &name) const { return folder.filePath(name); }

    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path(name);
    }

    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
        return file.readAll();
    }

    /// Settings for a display at `port`, with a port of the plug-in's that the system chooses and a
    /// shop of two articles.
    QString config(int serverPort = 1) const
    {
        write("goods.toml", "goods = [{ code = \"100\", name = \"Чай\", price = 1000 },\n"
                            "         { code = \"101\", name = \"Сахар\", price = 500 }]\n");
        return write("shop.toml", "[ViewConnector]\nport = 0\ninterval = 50\nserver = "
                                  "\"http://127.0.0.1:" +
                                      QByteArray::number(serverPort) +
                                      "\"\n[Shop]\ngoods = \"goods.toml\"\n");
    }

    static ProcessPtr startRegister(const QStringList &arguments)
    {
        return std::make_unique<Process>(QStringLiteral(REGISTER), arguments);
    }

    /// A display that listens; its address is its first line.
    ProcessPtr startDisplay(int port = 0)
    {
        auto display =
            std::make_unique<Process>(QStringLiteral(DISPLAY_PROGRAM),
                                      QStringList{"--port", QString::number(port), "--record",
                                                  path("record.jsonl"), "--plugin-url", pluginUrl});
        EXPECT_TRUE(display->waitForOutputLines(1)) << display->errors().toStdString();
        const QRegularExpression address("^Display at http://127.0.0.1:(\\d+), ");
        displayPort = address.match(QString(display->outputLines().value(0))).captured(1).toInt();
        EXPECT_NE(displayPort, 0);
        return display;
    }

    /// The messages that the display wrote down.
    QList<QJsonObject> record() const { return support::jsonLines(read("record.jsonl")); }

    bool waitForRecord(qsizetype count) const
    {
        return support::waitFor([&] { return record().size() >= count; });
    }

    /// Before a command that makes a message: waits until the plug-in has heard the answer to the
    /// last one recorded, with which a newer one of its type would go. There is one post at a time,
    /// so the arrival of another type tells it.
    void awaitAnswer(Process &cashRegister, const QByteArray &nextCommand) const
    {
        const bool makesDraft = nextCommand.contains("\"draft\"") || nextCommand.contains("266");
        const QString other = makesDraft ? "/content" : "/paymentdraft";
        const auto messages = record();
        const auto last = messages.last()["path"].toString();
        if (last == "/configure" || last == other)
            return;
        cashRegister.write(makesDraft ? "{\"do\":\"content\",\"hide\":true}\n"
                                      : "{\"do\":\"event\",\"code\":266}\n");
        EXPECT_TRUE(waitForRecord(messages.size() + 1));
    }

    QTemporaryDir folder;
    int displayPort = 0;                      // of the display that was started last
    QString pluginUrl = "http://127.0.0.1:1"; // where it looks for the plug-in: nobody is there
};
