#include "AvailabilityLog.h"

#include <log4qt/logger.h>

void AvailabilityLog::succeeded()
{
    if (m_failures == 0)
        return;
    if (m_logger != nullptr)
        m_logger->info(QStringLiteral("%1: связь восстановлена через %2 с, неудачных попыток: %3")
                           .arg(m_server)
                           .arg(static_cast<double>(m_unreachable.elapsed()) / 1000, 0, 'f', 1)
                           .arg(m_failures));
    m_failures = 0;
}

void AvailabilityLog::failed(const QString &reason)
{
    ++m_failures;
    if (m_failures > 1)
        return;
    m_unreachable.start();
    if (m_logger != nullptr)
        m_logger->error(QStringLiteral("%1: нет связи: %2").arg(m_server, reason));
}
