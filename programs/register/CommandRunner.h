#pragma once

#include <register/CommandAnswer.h>
#include <register/Commands.h>

#include <QJsonObject>
#include <QObject>

/**
 * Runs commands, wherever they come from, numbers them in one sequence and prints the answer of
 * each. What is wrong with a command becomes its answer.
 *
 * Besides the given commands it knows "wait", which pauses the one who sent it, and "quit", which
 * ends the program.
 *
 * Owner: main; the commands must outlive it. Thread: the main thread, signals too.
 */
class CommandRunner : public QObject
{
    Q_OBJECT

public:
    enum class Source { Script, Page };

    explicit CommandRunner(const Commands &commands) : m_commands(commands) {}

    /// Runs one command, which is given as JSON.
    CommandAnswer run(const QByteArray &text, Source source);

    /// Whether any command has failed so far.
    bool hasFailed() const { return m_failed; }

Q_SIGNALS:
    /// A command has run or has turned out to be wrong; `text` is as it was given.
    void answered(const QByteArray &text, const CommandAnswer &answer,
                  CommandRunner::Source source);
    /// Whoever sent the last command is to wait before the next one.
    void waitRequested(int ms, CommandRunner::Source source);
    void quitRequested();

private:
    void runCommand(const QJsonObject &command, Source source);

    const Commands &m_commands;
    int m_number = 0;
    bool m_failed = false;
};
