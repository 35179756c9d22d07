#pragma once

#include <QList>

/// The dialogs that the cashier has open, by id, the newest last. A value type.
class DialogStack
{
public:
    /// Opens one more; returns its id, which no dialog had before.
    int open();
    /// The id of the newest; 0 if none is open.
    int newest() const { return m_open.isEmpty() ? 0 : m_open.last(); }
    void close(int id) { m_open.removeAll(id); }

private:
    int m_lastId = 0;
    QList<int> m_open;
};
