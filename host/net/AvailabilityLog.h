#pragma once

#include <QElapsedTimer>
#include <QString>

namespace Log4Qt {
class Logger;
}

/**
 * Tells a log when a server went away and why, and when it came back: two lines, however often it
 * is tried meanwhile.
 *
 * Owner: the client of that server. Thread: that of the client.
 */
class AvailabilityLog
{
public:
    /// Null, the default, logs nothing.
    void setLogger(const Log4Qt::Logger *logger) { m_logger = logger; }
    void setServer(const QString &name) { m_server = name; }

    void succeeded();
    void failed(const QString &reason);

private:
    const Log4Qt::Logger *m_logger = nullptr;
    QString m_server;
    QElapsedTimer m_unreachable; // since the first of m_failures
    int m_failures = 0;          // since the server last answered
};
