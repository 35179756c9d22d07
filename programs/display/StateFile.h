#pragma once

#include <display/LastMessages.h>

#include <QFile>
#include <QString>

/**
 * Keeps the last messages in a file, so that a display that is started again shows at once what it
 * showed last. Each message is appended as a line of JSON; what no longer matters goes when the
 * file has grown to a multiple of what does.
 *
 * Owner: the customer's screen. Thread: the main thread.
 * Errors: a file that cannot be read or written is told to the log once, and the display goes on
 * without; a line that is torn or foreign is skipped. Shut-down: nothing to be done, each line is
 * handed to the system at once.
 */
class StateFile
{
public:
    /// Keeps nothing if the name is empty.
    explicit StateFile(const QString &fileName);

    LastMessages read();
    /// Adds `message`, which `messages` already has or has dealt with.
    void add(const KeptMessage &message, const LastMessages &messages);
    /// Leaves nothing but `messages`.
    void rewrite(const LastMessages &messages);

private:
    void append(const QByteArray &line);
    void giveUp(const QString &reason);

    QFile m_file;
    qint64 m_size = 0;          // of the file
    qint64 m_rewrittenSize = 0; // when it held just what mattered
};
