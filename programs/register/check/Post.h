#pragma once

#include <QByteArray>
#include <QString>

/// A message of the plug-in's on its way to a display under test, and how it fared. A value type.
struct Post
{
    QString path;
    QByteArray body;
    int result =
        0;         ///< as RestClient::result: 0 accepted, below 100 libcurl's error, or HTTP status
    double ms = 0; ///< until the answer
};
