#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>

#include <ostream>

namespace support {

/// The object that a JSON text stands for; empty if it is none.
inline QJsonObject json(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

/// The objects of JSON Lines, whose last line must be complete.
inline QList<QJsonObject> jsonLines(const QByteArray &text)
{
    QList<QJsonObject> objects;
    auto lines = text.split('\n');
    lines.removeLast();
    for (const auto &line : lines)
        objects.append(json(line));
    return objects;
}

} // namespace support

// How GoogleTest shows an object; found by the namespace of the type.
inline void PrintTo(const QJsonObject &object, std::ostream *out)
{
    *out << QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString();
}
