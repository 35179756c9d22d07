#pragma once

#include <log4qt/log4qtexport.h>

#include <QByteArray>
#include <QLoggingCategory>
#include <QString>

#include <utility>

namespace Log4Qt {

/**
 * A named logger that writes to the Qt logging category of the same name.
 *
 * Owner: LogManager, which never destroys a logger; a pointer to one stays valid until the process
 * ends.
 * Thread: every member is thread-safe.
 * Errors: none; a line whose level is off is dropped.
 * Shut-down: usable in destructors of static objects too.
 */
class LOG4QT_EXPORT Logger
{
public:
    Q_DISABLE_COPY_MOVE(Logger)

    QString name() const;

    bool isDebugEnabled() const;
    bool isInfoEnabled() const;
    bool isWarnEnabled() const;
    bool isErrorEnabled() const;

    void debug(const QString &message) const;
    void info(const QString &message) const;
    void warn(const QString &message) const;
    void error(const QString &message) const;

private:
    friend class LogManager;
    explicit Logger(QByteArray name);
    ~Logger() = default;

    const QByteArray m_name;
    const QLoggingCategory m_category;
};

} // namespace Log4Qt
