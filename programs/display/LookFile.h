#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

/// A picture of the screen's style, read from a file of this machine. A value type.
struct LookFile
{
    QString contentType;
    QByteArray content; ///< empty if there is none

    /// Reads what a setting names by its path or "file:" address. Only pictures of at most 16 MiB
    /// are read: the register must not be able to have other files of this machine shown.
    static LookFile read(const QJsonValue &path);
};
