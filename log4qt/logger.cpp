#include <log4qt/logger.h>

#include <QMessageLogger>

namespace Log4Qt {

Logger::Logger(QByteArray name) : m_name(std::move(name)), m_category(m_name.constData()) {}

QString Logger::name() const
{
    return QString::fromUtf8(m_name);
}

bool Logger::isDebugEnabled() const
{
    return m_category.isDebugEnabled();
}

bool Logger::isInfoEnabled() const
{
    return m_category.isInfoEnabled();
}

bool Logger::isWarnEnabled() const
{
    return m_category.isWarningEnabled();
}

bool Logger::isErrorEnabled() const
{
    return m_category.isCriticalEnabled();
}

void Logger::debug(const QString &message) const
{
    if (isDebugEnabled())
        QMessageLogger().debug(m_category).noquote() << message;
}

void Logger::info(const QString &message) const
{
    if (isInfoEnabled())
        QMessageLogger().info(m_category).noquote() << message;
}

void Logger::warn(const QString &message) const
{
    if (isWarnEnabled())
        QMessageLogger().warning(m_category).noquote() << message;
}

void Logger::error(const QString &message) const
{
    if (isErrorEnabled())
        QMessageLogger().critical(m_category).noquote() << message;
}

} // namespace Log4Qt
