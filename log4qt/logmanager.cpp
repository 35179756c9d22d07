#include <log4qt/logmanager.h>

#include <QMap>
#include <QMutex>

namespace Log4Qt {

Logger *LogManager::logger(const QString &name)
{
    // Never destroyed: destructors of static objects may still log.
    static QMutex &mutex = *new QMutex;
    static auto &loggers = *new QMap<QString, Logger *>;

    const QMutexLocker guard(&mutex);
    Logger *&logger = loggers[name];
    if (logger == nullptr)
        logger = new Logger(name.toUtf8());
    return logger;
}

} // namespace Log4Qt
