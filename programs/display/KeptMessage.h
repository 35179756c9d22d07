#pragma once

#include <QJsonObject>
#include <QString>

/// A message that the screen is drawn from. A value type.
struct KeptMessage
{
    int number = 0; ///< counts the messages that were accepted
    QString type;
    QJsonObject body;
    qint64 atMs = 0; ///< when it arrived, in milliseconds since the epoch

    QJsonObject toJson() const
    {
        return {{QStringLiteral("n"), number},
                {QStringLiteral("type"), type},
                {QStringLiteral("body"), body},
                {QStringLiteral("at"), atMs}};
    }

    static KeptMessage fromJson(const QJsonObject &json)
    {
        return {json[u"n"].toInt(), json[u"type"].toString(), json[u"body"].toObject(),
                json[u"at"].toInteger()};
    }
};
