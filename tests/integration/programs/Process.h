#pragma once

#include <support/Wait.h>

#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/**
 * A program that runs as a service would run it: without a terminal, without a display server, with
 * an environment of a folder to live in and the search path only, besides how leaks are looked for.
 *
 * Owner and thread: the test. Shut-down: the destructor kills what still runs.
 */
class Process
{
public:
    Process(const QString &program, const QStringList &arguments);
    ~Process();
    Q_DISABLE_COPY_MOVE(Process)

    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /// Waits for the end; the exit code, -1 if the program was killed or goes on.
    int exitCode();
    bool wasKilled() const { return m_process.exitStatus() == QProcess::CrashExit; }

    /// What it has printed so far.
    QByteArray output();
    QByteArray errors();
    /// The complete lines printed so far.
    QByteArrayList outputLines();
    bool waitForOutputLines(qsizetype count);
    bool waitForErrors(const QByteArray &part);

    void write(const QByteArray &input) { m_process.write(input); }
    void closeInput() { m_process.closeWriteChannel(); }
    /// Sends SIGTERM, SIGINT, SIGKILL or another signal.
    void signal(int number) const;

private:
    QTemporaryDir m_home;
    QProcess m_process;
    QByteArray m_output;
    QByteArray m_errors;
};
