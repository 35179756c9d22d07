#pragma once

#include <QList>
#include <QString>

/// The dialogs that the cashier has open, the newest last. A value type.
class DialogStack
{
public:
    struct Dialog
    {
        int id;
        QString kind;
    };

    /// Opens one more; returns its id, which no dialog had before.
    int open(const QString &kind);
    const QList<Dialog> &all() const { return m_open; }
    /// The id of the newest; 0 if none is open.
    int newest() const { return m_open.isEmpty() ? 0 : m_open.last().id; }
    void close(int id);

private:
    int m_lastId = 0;
    QList<Dialog> m_open;
};
