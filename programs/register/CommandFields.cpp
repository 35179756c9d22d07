#include <register/CommandFields.h>

#include <register/CommandError.h>

#include <cmath>
#include <limits>

namespace {

std::optional<int> toInteger(const QJsonValue &value)
{
    using Int = std::numeric_limits<int>;
    const double number = value.toDouble(std::nan(""));
    const bool fits = number >= Int::min() && number <= Int::max();
    return fits && number == std::trunc(number) ? std::optional(static_cast<int>(number))
                                                : std::nullopt;
}

std::optional<double> toNumber(const QJsonValue &value)
{
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<QString> toText(const QJsonValue &value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<bool> toBoolean(const QJsonValue &value)
{
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<QJsonObject> toObject(const QJsonValue &value)
{
    return value.isObject() ? std::optional(value.toObject()) : std::nullopt;
}

std::optional<QJsonArray> toList(const QJsonValue &value)
{
    return value.isArray() ? std::optional(value.toArray()) : std::nullopt;
}

/// The field as `convert` reads it, or the default if it is missing. `wanted` says, for people,
/// what the field takes.
template <class Value>
Value read(const QJsonObject &command, const QString &name,
           const std::optional<Value> &defaultValue,
           std::optional<Value> (*convert)(const QJsonValue &), const QString &wanted)
{
    const auto field = command.value(name);
    if (field.isUndefined()) {
        if (!defaultValue)
            throw CommandError(QStringLiteral("\"%1\" is missing: give %2").arg(name, wanted));
        return *defaultValue;
    }
    const auto value = convert(field);
    if (!value)
        throw CommandError(QStringLiteral("\"%1\" has the wrong type: give %2").arg(name, wanted));
    return *value;
}

} // namespace

int CommandFields::integer(const QString &name, std::optional<int> defaultValue) const
{
    return read(m_command, name, defaultValue, &toInteger, QStringLiteral("a whole number"));
}

double CommandFields::number(const QString &name, std::optional<double> defaultValue) const
{
    return read(m_command, name, defaultValue, &toNumber, QStringLiteral("a number"));
}

QString CommandFields::text(const QString &name, const std::optional<QString> &defaultValue) const
{
    return read(m_command, name, defaultValue, &toText, QStringLiteral("a text"));
}

bool CommandFields::boolean(const QString &name, std::optional<bool> defaultValue) const
{
    return read(m_command, name, defaultValue, &toBoolean, QStringLiteral("true or false"));
}

QJsonObject CommandFields::object(const QString &name,
                                  const std::optional<QJsonObject> &defaultValue) const
{
    return read(m_command, name, defaultValue, &toObject, QStringLiteral("an object"));
}

QJsonArray CommandFields::list(const QString &name,
                               const std::optional<QJsonArray> &defaultValue) const
{
    return read(m_command, name, defaultValue, &toList, QStringLiteral("a list"));
}
