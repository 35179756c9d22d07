#pragma once

#include <QByteArray>
#include <QString>

/// A message of the plug-in's on its way to a display under test, and how it fared. A value type.
struct Post
{
    QString path;
    QByteArray body;
    double startedMs = 0; ///< on the system's monotonic clock
    /// As RestClient::result: 0 accepted, below 100 libcurl's error, otherwise the HTTP status.
    int result = 0;
    double ms = 0; ///< until the answer
};
