#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <QtGlobal>

namespace support {

/// Collects what is logged while it lives, from all threads, instead of printing it.
class LogCapture
{
public:
    struct Line
    {
        QtMsgType level;
        QString logger;
        QString text;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QList<Line> lines() const;
    /// The texts of one logger's lines, in their order.
    QStringList textsOf(const QString &logger) const;

private:
    QtMessageHandler m_previous;
};

} // namespace support
