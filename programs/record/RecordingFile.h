#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/**
 * Where a recording is written: a new file that only its owner can read, or standard output.
 *
 * Owner: the recording. Thread: the main thread.
 * Errors: the constructor throws UsageError if the file exists or cannot be made. What cannot be
 * written later is told on standard error, once; the rest is dropped.
 */
class RecordingFile
{
public:
    /// "-" stands for standard output.
    explicit RecordingFile(const QString &fileName);

    /// Adds a line, and flushes it: a recording is complete up to the moment of a kill.
    void write(const QByteArray &line);
    bool hasFailed() const { return m_failed; }

private:
    QFile m_file;
    bool m_failed = false;
};
