#include <register/CommandFields.h>

#include <register/CommandError.h>

#include <cmath>
#include <limits>

namespace {

[[noreturn]] void wrongField(const QString &name, const QJsonValue &value, const QString &wanted)
{
    throw CommandError(
        value.isUndefined()
            ? QStringLiteral("\"%1\" is missing: give %2").arg(name, wanted)
            : QStringLiteral("\"%1\" has the wrong type: give %2").arg(name, wanted));
}

} // namespace

int CommandFields::integer(const QString &name, std::optional<int> defaultValue) const
{
    using Int = std::numeric_limits<int>;
    const auto value = m_command.value(name);
    if (value.isUndefined() && defaultValue)
        return *defaultValue;
    const double number = value.toDouble(std::nan(""));
    if (!(number >= Int::min() && number <= Int::max()) || number != std::trunc(number))
        wrongField(name, value, QStringLiteral("a whole number"));
    return static_cast<int>(number);
}

double CommandFields::number(const QString &name, std::optional<double> defaultValue) const
{
    const auto value = m_command.value(name);
    if (value.isUndefined() && defaultValue)
        return *defaultValue;
    if (!value.isDouble())
        wrongField(name, value, QStringLiteral("a number"));
    return value.toDouble();
}

QString CommandFields::text(const QString &name, std::optional<QString> defaultValue) const
{
    const auto value = m_command.value(name);
    if (value.isUndefined() && defaultValue)
        return *defaultValue;
    if (!value.isString())
        wrongField(name, value, QStringLiteral("a text"));
    return value.toString();
}

bool CommandFields::boolean(const QString &name, std::optional<bool> defaultValue) const
{
    const auto value = m_command.value(name);
    if (value.isUndefined() && defaultValue)
        return *defaultValue;
    if (!value.isBool())
        wrongField(name, value, QStringLiteral("true or false"));
    return value.toBool();
}

QJsonObject CommandFields::object(const QString &name,
                                  std::optional<QJsonObject> defaultValue) const
{
    const auto value = m_command.value(name);
    if (value.isUndefined() && defaultValue)
        return *defaultValue;
    if (!value.isObject())
        wrongField(name, value, QStringLiteral("an object"));
    return value.toObject();
}

QJsonArray CommandFields::list(const QString &name, std::optional<QJsonArray> defaultValue) const
{
    const auto value = m_command.value(name);
    if (value.isUndefined() && defaultValue)
        return *defaultValue;
    if (!value.isArray())
        wrongField(name, value, QStringLiteral("a list"));
    return value.toArray();
}
