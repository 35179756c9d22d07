#pragma once

#include <integration/programs/Process.h>

#include <support/PrintQt.h>

#include <QRegularExpression>

#include <gtest/gtest.h>

/// The ad service on a port that the system chose.
class AdServiceProcess : public Process
{
public:
    explicit AdServiceProcess(const QStringList &options = {})
        : Process(QStringLiteral(ADSERVICE), QStringList{"--port", "0"} + options)
    {
        EXPECT_TRUE(waitForOutputLines(1)) << errors().toStdString();
        static const QRegularExpression start("^Ad service at http://127\\.0\\.0\\.1:(\\d+)$");
        m_port = start.match(QString(outputLines().value(0))).captured(1).toInt();
        EXPECT_NE(m_port, 0) << output().toStdString();
    }

    int port() const { return m_port; }
    QString address() const { return QString("127.0.0.1:%1").arg(m_port); }

    /// What it has printed after its start, without the times.
    QStringList events()
    {
        constexpr int timeWidth = 14;
        QStringList lines;
        for (const auto &line : outputLines().mid(1))
            lines += QString::fromUtf8(line.mid(timeWidth));
        return lines;
    }

private:
    int m_port = 0;
};
