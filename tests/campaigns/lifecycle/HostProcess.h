#pragma once

#include <QProcess>
#include <QStringList>

#include <chrono>

/// A lifecycle_host that was started. Owner and thread: the test. Shut-down: is killed.
class HostProcess
{
public:
    explicit HostProcess(const QStringList &arguments);

    /// Waits for its end, by itself and with the exit code that it has of its own.
    void expectToEndWell(std::chrono::milliseconds deadline);

    /// The numbers of each line that it printed under `name`.
    QList<QList<qint64>> numbers(const QByteArray &name) const;

private:
    QProcess m_process;
    QByteArray m_output; // all of it, after its end
};
