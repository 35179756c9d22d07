#include <register/Commands.h>

#include <register/CommandError.h>
#include <register/CommandFields.h>

#include <QStringList>

void Commands::add(const QString &name, const Handler &handler)
{
    m_handlers.insert(name, handler);
}

void Commands::run(const QJsonObject &command) const
{
    const auto name = CommandFields(command).text(QStringLiteral("do"));
    const auto handler = m_handlers.constFind(name);
    if (handler == m_handlers.cend())
        throw CommandError(QStringLiteral("\"%1\" is no command; there are: %2")
                               .arg(name, m_handlers.keys().join(QStringLiteral(", "))));
    (*handler)(command);
}
