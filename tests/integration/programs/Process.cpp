#include "Process.h"

#include <QDir>
#include <QProcessEnvironment>

#include <csignal>

Process::Process(const QString &program, const QStringList &arguments)
{
    QProcessEnvironment environment;
    environment.insert("PATH", qEnvironmentVariable("PATH"));
    environment.insert("HOME", m_home.path());
    environment.insert("LC_ALL", "C.UTF-8");
    if (const char *leakCheck = "LSAN_OPTIONS"; qEnvironmentVariableIsSet(leakCheck))
        environment.insert(leakCheck, qEnvironmentVariable(leakCheck));
    m_process.setProcessEnvironment(environment);
    m_process.start(program, arguments);
    m_process.waitForStarted();
}

Process::~Process()
{
    if (!isRunning())
        return;
    m_process.kill();
    m_process.waitForFinished();
}

int Process::exitCode()
{
    if (!support::waitFor([this] { return !isRunning(); }))
        return -1;
    return wasKilled() ? -1 : m_process.exitCode();
}

QByteArray Process::output()
{
    m_output += m_process.readAllStandardOutput();
    return m_output;
}

QByteArray Process::errors()
{
    m_errors += m_process.readAllStandardError();
    return m_errors;
}

QByteArrayList Process::outputLines()
{
    auto lines = output().split('\n');
    lines.removeLast();
    return lines;
}

bool Process::waitForOutputLines(qsizetype count)
{
    return support::waitFor([&] { return outputLines().size() >= count; });
}

bool Process::waitForErrors(const QByteArray &part)
{
    return support::waitFor([&] { return errors().contains(part); });
}

void Process::signal(int number) const
{
    kill(static_cast<pid_t>(m_process.processId()), number);
}
