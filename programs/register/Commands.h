#pragma once

#include <QJsonObject>
#include <QMap>
#include <QString>

#include <functional>

/// The commands of the register by name. A handler throws CommandError if it cannot do its work.
class Commands
{
public:
    using Handler = std::function<void(const QJsonObject &)>;

    void add(const QString &name, const Handler &handler);

    /// Runs the command that "do" names. Throws CommandError, also for an unknown command.
    void run(const QJsonObject &command) const;

private:
    QMap<QString, Handler> m_handlers;
};
