#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

namespace Log4Qt {

LogError::LogError(const QString &, int) {}

Logger::Logger(const QString &name)
{
    setObjectName(name);
}

QString Logger::name() const
{
    return objectName();
}

bool Logger::isDebugEnabled() const
{
    return false;
}

bool Logger::isInfoEnabled() const
{
    return true;
}

LogStream Logger::debug() const
{
    return {};
}
void Logger::debug(const LogError &) const {}
void Logger::debug(const QString &) const {}
LogStream Logger::info() const
{
    return {};
}
void Logger::info(const LogError &) const {}
void Logger::info(const QString &) const {}
LogStream Logger::warn() const
{
    return {};
}
void Logger::warn(const LogError &) const {}
void Logger::warn(const QString &) const {}
LogStream Logger::error() const
{
    return {};
}
void Logger::error(const LogError &) const {}
void Logger::error(const QString &) const {}

Logger *LogManager::logger(const QString &name)
{
    return new Logger(name);
}

Logger *LogManager::logger(const char *name)
{
    return logger(QString::fromUtf8(name));
}

} // namespace Log4Qt
