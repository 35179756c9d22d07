#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// How a command went. A value type.
struct CommandAnswer
{
    int number = 0; ///< counted from 1 since the register started
    QString name;   ///< what "do" named; empty if the command was none
    QString error;  ///< what was wrong and how to mend it; empty if it was done

    bool isOk() const { return error.isEmpty(); }
    /// One line of JSON Lines: {"n":3,"do":"sell","ok":true}, with "error" if it was not done.
    QByteArray toLine() const;
    QJsonObject toJson() const;
};
