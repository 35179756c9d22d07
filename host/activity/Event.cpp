#include <Event.h>

#include <utility>

Event::Event(int code, QVariantMap arguments) : m_code(code), m_arguments(std::move(arguments)) {}

QVariant Event::value(const QString &name, const QVariant &defaultValue) const
{
    return m_arguments.value(name, defaultValue);
}

bool Event::contains(const QString &name) const
{
    return m_arguments.contains(name);
}
