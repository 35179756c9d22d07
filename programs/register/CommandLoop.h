#pragma once

#include <register/Commands.h>
#include <register/LineReader.h>

#include <QObject>
#include <QString>

/**
 * Runs the commands of a file or of standard input, one in each turn of the event loop, and prints
 * an answer for each. A wrong line is reported and the next one runs.
 *
 * Besides the given commands it knows "wait", which pauses, and "quit", which ends the program.
 *
 * Owner: main; the commands must outlive it. Thread: the main thread.
 * Errors: the constructor throws UsageError if the file cannot be opened.
 */
class CommandLoop : public QObject
{
    Q_OBJECT

public:
    CommandLoop(const Commands &commands, const QString &fileName);

    /// Whether any command has failed so far.
    bool hasFailed() const { return m_failed; }

Q_SIGNALS:
    /// The last command has run, or "quit" was asked for.
    void finished(bool quit);

private:
    void runNext();
    void runLine(const QByteArray &line);
    void runCommand(const QJsonObject &command);
    void print(const QString &name, const QString &error) const;

    const Commands &m_commands;
    LineReader m_reader;
    int m_number = 0;
    int m_waitMs = 0; // after the command that has just run
    bool m_waiting = false;
    bool m_finished = false;
    bool m_quit = false;
    bool m_failed = false;
};
