#pragma once

#include <HostExport.h>

#include <QMetaType>
#include <QVariantMap>

/// Something that happened in the register: a code and named arguments. A value type.
class HOST_EXPORT Event
{
public:
    Event() = default;
    explicit Event(int code, QVariantMap arguments = {});

    int getCode() const { return m_code; }
    QVariantMap getArguments() const { return m_arguments; }
    QVariant value(const QString &name, const QVariant &defaultValue) const;
    bool contains(const QString &name) const;

private:
    int m_code = 0;
    QVariantMap m_arguments;
};

Q_DECLARE_METATYPE(Event)
