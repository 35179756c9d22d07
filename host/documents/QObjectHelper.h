#pragma once

#include <HostExport.h>

#include <QObject>
#include <QStringList>
#include <QVariantMap>

/// Conversions of objects by their properties. Thread: that of the object.
class HOST_EXPORT QObjectHelper
{
public:
    QObjectHelper() = delete;

    /// The readable declared and the dynamic properties of `object`, by name, without those in
    /// `leftOut`; empty for null. The values are shared with the object, not copied deeply.
    static QVariantMap qobject2qvariant(const QObject *object, const QStringList &leftOut);
};
