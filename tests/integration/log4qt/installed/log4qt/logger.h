#pragma once

#include <QObject>
#include <QString>
#include <QTextStream>

namespace Log4Qt {

class LogError
{
public:
    LogError() = default;
    explicit LogError(const QString &message, int code = 0);
};

class LogStream
{
public:
    template <class Value>
    LogStream &operator<<(const Value &)
    {
        return *this;
    }
};

class Logger : public QObject
{
    Q_OBJECT

public:
    explicit Logger(const QString &name);
    QString name() const;

    bool isDebugEnabled() const;
    bool isInfoEnabled() const;

    LogStream debug() const;
    void debug(const LogError &error) const;
    void debug(const QString &message) const;
    template <class Value, class... Values>
    void debug(const QString &message, Value &&value, Values &&...values)
    {
        debug(message.arg(value), values...);
    }

    LogStream info() const;
    void info(const LogError &error) const;
    void info(const QString &message) const;
    template <class Value, class... Values>
    void info(const QString &message, Value &&value, Values &&...values)
    {
        info(message.arg(value), values...);
    }

    LogStream warn() const;
    void warn(const LogError &error) const;
    void warn(const QString &message) const;

    LogStream error() const;
    void error(const LogError &error) const;
    void error(const QString &message) const;
};

} // namespace Log4Qt
