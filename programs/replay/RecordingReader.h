#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <optional>

class QJsonObject;

/// A message that a display has accepted. A value type.
struct RecordedMessage
{
    qint64 line = 0; ///< of the recording; the first is 1
    double ms = 0;   ///< when it was posted, from an unknown start
    QString type;
    QByteArray path; ///< with its query
    QByteArray body;
};

/**
 * Reads the messages of a recording, one after the other: of viewconnector-record, of the display's
 * --record, and of the inspector's export.
 *
 * What a display has not accepted, and what is posted to no message's path, is passed over;
 * requests of the display and the other entries of an export are none of this.
 *
 * Owner: who replays. Thread: the owner's. No more than one line is kept in memory.
 * Errors: the constructor throws UsageError if the file cannot be read, `next` with file and line
 * if a line is broken or longer than 64 MiB.
 */
class RecordingReader
{
public:
    static constexpr qint64 maxLineBytes = 67'108'864; // 64 MiB

    explicit RecordingReader(const QString &fileName);

    /// The next message; empty at the end.
    std::optional<RecordedMessage> next();
    /// How many were passed over so far.
    int passedOver() const { return m_passedOver; }

private:
    std::optional<RecordedMessage> read(const QByteArray &line);
    [[noreturn]] void fail(const QString &problem) const;

    QFile m_file;
    qint64 m_line = 0;
    int m_passedOver = 0;
};
