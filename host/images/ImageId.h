#pragma once

#include <HostExport.h>

#include <QHashFunctions>
#include <QJsonObject>
#include <QMetaType>
#include <QObject>
#include <QString>

#include <compare>

/// Names a picture: the kind of identifier and its text, as in {"type":"GoodsCode","value":"100"}.
/// A value type; the text is empty for an unknown picture.
class HOST_EXPORT ImageId
{
    Q_GADGET

public:
    enum IdType : int { GoodsCode = 0, Barcode = 1 };
    Q_ENUM(IdType)

    ImageId() = default;
    ImageId(IdType type, QString value);
    /// An unknown type name reads as GoodsCode, a missing value as an empty text.
    explicit ImageId(const QJsonObject &json);

    IdType type() const { return m_type; }
    QString value() const { return m_value; }
    QJsonObject toJson() const;

    bool operator==(const ImageId &) const = default;
    bool operator<(const ImageId &other) const;

    friend std::size_t qHash(const ImageId &id, std::size_t seed = 0)
    {
        return qHashMulti(seed, static_cast<int>(id.m_type), id.m_value);
    }

private:
    IdType m_type = GoodsCode;
    QString m_value;
};
