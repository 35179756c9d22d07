#pragma once

#include <replay/RecordingReader.h>
#include <replay/ReplayOptions.h>

#include <relay/HttpTransfer.h>

#include <QObject>
#include <QTimer>

#include <optional>
#include <thread>

/**
 * Posts the messages of a recording to a display, in their order, one at a time and none before its
 * time, and prints what becomes of each.
 *
 * Owner: main. Thread: the main thread; the posts are made on a thread of its own.
 * Errors: the constructor throws UsageError if the recording is broken or has no message; nothing
 * has been sent then. A message that is refused, or not answered within a minute, does not stop the
 * others.
 * Shut-down: the destructor gives up the post under way.
 */
class Replay : public QObject
{
    Q_OBJECT

public:
    explicit Replay(const ReplayOptions &options);

    void start();
    void printSummary() const;
    /// Whether all messages were sent, and accepted.
    bool hasSucceeded() const { return m_isOver && m_accepted == m_sent; }
    /// What has broken the recording since it was checked; empty if nothing has.
    QString error() const { return m_error; }

Q_SIGNALS:
    /// Nothing is left to be sent. Emitted on the main thread.
    void finished();

private:
    void takeNext();
    void sendWhenDue();
    void send();
    void takeAnswer(const HttpAnswer &answer, double tookMs);
    void print(const HttpAnswer &answer, double tookMs) const;

    const ReplayOptions m_options;
    const double m_firstMs; // in the recording
    RecordingReader m_reader;
    std::optional<RecordedMessage> m_message; // the one that is due next, or on its way
    double m_startedMs = 0;
    QTimer m_due;
    int m_sent = 0;
    int m_accepted = 0;
    int m_refused = 0;
    bool m_isOver = false;
    QString m_error;
    std::jthread m_thread; // last: it calls this object
};
