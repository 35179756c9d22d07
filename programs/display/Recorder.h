#pragma once

#include <display/MessageReader.h>

#include <QFile>
#include <QString>

/**
 * Writes each received message as a line of JSON to a file, and flushes it, so that a record is
 * complete up to the moment at which the display was killed.
 *
 * Owner: the display. Thread: the main thread.
 * Errors: the constructor throws UsageError if the file cannot be written.
 */
class Recorder
{
public:
    explicit Recorder(const QString &fileName);

    /// `arrivalMs` is on the system's monotonic clock, `sinceStartMs` since the display's start.
    void write(int number, double sinceStartMs, double arrivalMs, const QString &path,
               const ReceivedMessage &message);

private:
    QFile m_file;
};
