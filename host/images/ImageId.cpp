#include <ImageId.h>

#include <QMetaEnum>

#include <tuple>
#include <utility>

namespace {

constexpr auto typeKey = "type";
constexpr auto valueKey = "value";

} // namespace

ImageId::ImageId(IdType type, QString value) : m_type(type), m_value(std::move(value)) {}

ImageId::ImageId(const QJsonObject &json) : m_value(json[QLatin1String(valueKey)].toString())
{
    const auto name = json[QLatin1String(typeKey)].toString().toLatin1();
    bool known = false;
    const int type = QMetaEnum::fromType<IdType>().keyToValue(name.constData(), &known);
    if (known)
        m_type = static_cast<IdType>(type);
}

QJsonObject ImageId::toJson() const
{
    const auto *name = QMetaEnum::fromType<IdType>().valueToKey(m_type);
    return {{QLatin1String(typeKey), QLatin1String(name)}, {QLatin1String(valueKey), m_value}};
}

bool ImageId::operator<(const ImageId &other) const
{
    return std::tie(m_type, m_value) < std::tie(other.m_type, other.m_value);
}
