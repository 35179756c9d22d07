#pragma once

#include <HostExport.h>

#include <QList>
#include <QString>

#include <utility>

/// The header fields of an HTTP message, in their order; names are compared without case. A value
/// type.
class HOST_EXPORT BasicHeader
{
public:
    using Field = std::pair<QString, QString>;

    /// The value of the first field of that name; a null text if there is none.
    QString value(const QString &name) const;
    /// Sets the one field of that name, replacing all earlier ones.
    void setValue(const QString &name, const QString &value);
    /// Adds a field beside those of the same name.
    void addValue(const QString &name, const QString &value);
    QList<Field> fields() const { return m_fields; }

    QString contentType() const;
    void setContentType(const QString &type);

private:
    QList<Field> m_fields;
};
