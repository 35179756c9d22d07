#pragma once

#include <display/Switches.h>

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QString>

#include <deque>

/// A message as it came and what became of it.
struct JournalMessage
{
    int number = 0;
    QString type;
    QString path;
    QJsonValue body; ///< null if it was no JSON object
    qint64 bytes = 0;
    int status = 0; ///< 0: the connection was closed without an answer
    QString reason; ///< why it was refused
    double arrivalMs = 0;
    double tookMs = 0; ///< from its arrival to its answer
    bool isReplay = false;
};

/**
 * What happened on the wire, for the inspector: messages and their answers, requests to the
 * plug-in, what the register asked for, notes. Bounded: the oldest entries fall out.
 *
 * Times are on the system's monotonic clock, in milliseconds.
 *
 * Owner: the display. Thread: the main thread.
 */
class Journal : public QObject
{
    Q_OBJECT

public:
    static constexpr std::size_t maxEntries = 5000;
    static constexpr qint64 maxBytes = 16'777'216; // 16 MiB as JSON, besides the newest

    void addAsked(const QString &type, double atMs);
    void addMessage(const JournalMessage &message);
    void addRequest(const QJsonObject &request, double sentMs, bool accepted);
    void addNote(const QString &text);

    /// All entries as an array on one line, in the order of their numbers.
    QByteArray toJson() const;

Q_SIGNALS:
    /// `entry` is an object of JSON on one line.
    void added(const QByteArray &entry);

private:
    void add(QJsonObject entry);

    std::deque<QByteArray>
        m_entries; // as text: parsed, a hostile body takes tens of times the room
    qint64 m_bytes = 0;
    int m_lastId = 0;
};
