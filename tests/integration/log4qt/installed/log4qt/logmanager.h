#pragma once

#include <log4qt/logger.h>

namespace Log4Qt {

class LogManager : public QObject
{
    Q_OBJECT

public:
    static Logger *logger(const QString &name);
    static Logger *logger(const char *name);
};

} // namespace Log4Qt
