#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <optional>

/**
 * Typed reads of a command's fields. Each throws CommandError, naming the field and what it takes,
 * if the field has another type, or is missing and no default is given.
 *
 * A value type; it refers to the object, which must outlive it.
 */
class CommandFields
{
public:
    explicit CommandFields(const QJsonObject &command) : m_command(command) {}

    bool contains(const QString &name) const { return m_command.contains(name); }
    QJsonValue value(const QString &name) const { return m_command.value(name); }

    int integer(const QString &name, std::optional<int> defaultValue = {}) const;
    double number(const QString &name, std::optional<double> defaultValue = {}) const;
    QString text(const QString &name, const std::optional<QString> &defaultValue = {}) const;
    bool boolean(const QString &name, std::optional<bool> defaultValue = {}) const;
    QJsonObject object(const QString &name,
                       const std::optional<QJsonObject> &defaultValue = {}) const;
    QJsonArray list(const QString &name, const std::optional<QJsonArray> &defaultValue = {}) const;

private:
    const QJsonObject &m_command;
};
