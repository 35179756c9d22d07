#include "HostProcess.h"

#include <gtest/gtest.h>

HostProcess::HostProcess(const QStringList &arguments)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(LIFECYCLE_HOST), arguments);
}

void HostProcess::expectToEndWell(std::chrono::milliseconds deadline)
{
    const bool hasEnded = m_process.state() == QProcess::NotRunning ||
                          m_process.waitForFinished(static_cast<int>(deadline.count()));
    EXPECT_TRUE(hasEnded) << m_process.errorString().toStdString();
    EXPECT_EQ(m_process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_process.exitCode(), 42); // a sanitizer would change it
    m_output = m_process.readAllStandardOutput();
}

QList<QList<qint64>> HostProcess::numbers(const QByteArray &name) const
{
    QList<QList<qint64>> found;
    for (const auto &line : m_output.split('\n')) {
        auto words = line.split(' ');
        if (words.takeFirst() != name)
            continue;
        found.emplaceBack();
        for (const auto &word : words)
            found.last().append(word.toLongLong());
    }
    return found;
}
