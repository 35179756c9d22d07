#pragma once

#include <log4qt/log4qtexport.h>
#include <log4qt/logger.h>

namespace Log4Qt {

/**
 * Hands out loggers by name: the same name always gives the same logger.
 *
 * Owner: none, it has only static members.
 * Thread: every member is thread-safe.
 */
class LOG4QT_EXPORT LogManager
{
public:
    static Logger *logger(const QString &name);
};

} // namespace Log4Qt
