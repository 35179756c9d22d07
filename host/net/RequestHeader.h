#pragma once

#include <BasicHeader.h>

#include <QMetaType>

/// The request line and header fields of an HTTP request. A value type.
class HOST_EXPORT RequestHeader : public BasicHeader
{
public:
    RequestHeader() = default;
    RequestHeader(QString method, QString path);

    QString method() const { return m_method; }
    /// The path with its query.
    QString path() const { return m_path; }

private:
    QString m_method;
    QString m_path;
};

Q_DECLARE_METATYPE(RequestHeader)
