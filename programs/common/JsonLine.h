#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QList>
#include <QString>

#include <utility>

using JsonField = std::pair<QString, QJsonValue>;

/// One line of JSON Lines: an object with its keys in the given order, and the line's end.
QByteArray jsonLine(const QList<JsonField> &fields);
