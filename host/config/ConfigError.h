#pragma once

#include <HostExport.h>

#include <QString>

#include <stdexcept>

/// Says which settings file cannot be used, where in it and why; the text is meant for people.
class HOST_EXPORT ConfigError : public std::runtime_error
{
public:
    explicit ConfigError(const QString &message) : std::runtime_error(message.toStdString()) {}
};
