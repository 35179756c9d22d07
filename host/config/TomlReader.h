#pragma once

#include <QMap>
#include <QString>
#include <QVariantMap>

/// Reads a TOML file into groups: the path of a table, joined by dots, names the group; each value
/// in it keeps its type. Dates and times become text. Throws ConfigError with file, line and
/// column.
QMap<QString, QVariantMap> readToml(const QString &fileName);
