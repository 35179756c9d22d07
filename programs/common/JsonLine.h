#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

#include <initializer_list>
#include <utility>

/// One line of JSON Lines: an object with its keys in the given order, and the line's end.
QByteArray jsonLine(std::initializer_list<std::pair<QString, QJsonValue>> fields);
