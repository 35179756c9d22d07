#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>

/**
 * Counts what the plug-in was asked to tell the display, by message type, with the time of each.
 *
 * It hears the plug-in's signal that a message was queued; which type it is follows from what the
 * register is just doing, which `Scope` tells. Messages outside of any scope are not counted: the
 * display asked for them itself, pictures and further advertisements.
 *
 * Owner: the till. Thread: the main thread.
 */
class AskedFor : public QObject
{
    Q_OBJECT

public:
    /// While it lives, messages count as of this type, or only the first of them.
    class Scope
    {
    public:
        enum class Counts { All, First };

        Scope(AskedFor &askedFor, const QString &type, Counts counts = Counts::All);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

        /// Whether a message was queued in this scope.
        bool wasAsked() const;

    private:
        AskedFor &m_askedFor;
        const QString m_type;
        const QString m_outerType;
        const bool m_outerFirstOnly;
        const qsizetype m_before;
    };

    /// Listens to the signal `hasMessage()` of a plug-in's object; a plug-in without it is not
    /// counted.
    void follow(const QObject *plugin);

    /// Times on the monotonic clock, in milliseconds, by message type.
    const QMap<QString, QList<double>> &times() const { return m_times; }

Q_SIGNALS:
    /// A message has been counted, as of this time.
    void asked(const QString &type, double monotonicMs);

private Q_SLOTS:
    void countMessage();

private:
    QString m_type; // empty: not counted
    bool m_firstOnly = false;
    QMap<QString, QList<double>> m_times;
};
