#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <memory>
#include <optional>

/**
 * Reads lines from a file or from standard input without ever blocking the event loop, and no
 * further ahead than they are taken.
 *
 * Owner: the command loop. Thread: the main thread.
 * Errors: the constructor throws UsageError if the file cannot be opened. A line beyond 1 MiB is
 * cut there.
 */
class LineReader : public QObject
{
    Q_OBJECT

public:
    /// "-" stands for standard input.
    explicit LineReader(const QString &fileName);
    ~LineReader() override;

    /// The next line without its end; empty if none has arrived yet, see `isAtEnd`.
    std::optional<QByteArray> takeLine();
    /// Whether all lines have been taken.
    bool isAtEnd() const { return m_ended && m_buffer.isEmpty(); }

Q_SIGNALS:
    /// A line may have arrived, or the end.
    void changed();

private:
    void readMore();

    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_buffer;
    bool m_ended = false;
};
