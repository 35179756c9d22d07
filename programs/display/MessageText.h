#pragma once

#include <QJsonObject>
#include <QString>

/// What a message says, in a few words for people: "receipt 5, 3 positions, total 120.50".
QString describeMessage(const QString &type, const QJsonObject &body);
