#pragma once

#include <register/CommandRunner.h>
#include <register/LineReader.h>

#include <QObject>
#include <QString>

/**
 * Runs the commands of a file or of standard input, one in each turn of the event loop. A wrong
 * line is answered as such and the next one runs. "wait" pauses it, "quit" from anywhere stops it.
 *
 * Owner: main; the runner must outlive it. Thread: the main thread.
 * Errors: the constructor throws UsageError if the file cannot be opened.
 */
class CommandLoop : public QObject
{
    Q_OBJECT

public:
    CommandLoop(CommandRunner &runner, const QString &fileName);

Q_SIGNALS:
    /// The last command has run, or "quit" was one.
    void finished();

private:
    void runNext();

    CommandRunner &m_runner;
    LineReader m_reader;
    int m_waitMs = 0; // after the command that has just run
    bool m_waiting = false;
    bool m_finished = false;
    bool m_quit = false;
};
