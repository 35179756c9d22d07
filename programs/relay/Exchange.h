#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// A request that went through a Relay, with the answer that came back. A value type.
struct Exchange
{
    quint64 number = 0;    ///< 1 for the first request that came, and so on
    QDateTime startedAt;   ///< UTC
    double startedMs = 0;  ///< on the system's monotonic clock
    double durationMs = 0; ///< until the answer was complete, or given up
    QByteArray method;
    QString path; ///< with its query
    QByteArray requestBody;
    QByteArray requestContentType;
    int status = 0; ///< 0: there was no answer
    QByteArray answerBody;
    QByteArray answerContentType;
    QString error; ///< why there was no answer, for people
};
