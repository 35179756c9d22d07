#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

/// One command to the register and the message that it must lead to.
struct CheckStep
{
    QString type;
    QString what;
    QJsonObject command;
};

/**
 * What the register does to a display under test: each message in each of its forms.
 *
 * No two neighbours make messages of one type: the plug-in keeps the newest of each, and a newer
 * one goes with the one that is just being acknowledged.
 */
QList<CheckStep> checkScript();
