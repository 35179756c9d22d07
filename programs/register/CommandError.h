#pragma once

#include <QString>

#include <stdexcept>

/// Says what is wrong with a command and how to mend it; it becomes the "error" of the answer.
class CommandError : public std::runtime_error
{
public:
    explicit CommandError(const QString &message) : std::runtime_error(message.toStdString()) {}
};
