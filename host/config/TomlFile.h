#pragma once

#include <HostExport.h>

#include <QString>
#include <QVariantMap>

/// The content of a TOML file: tables as maps, arrays as lists, values with their type, dates and
/// times as text. Throws ConfigError with file, line and column.
HOST_EXPORT QVariantMap readTomlFile(const QString &fileName);
