#pragma once

#include <QString>

#include <stdexcept>

/// Says what is wrong with an option and how to mend it; the text is meant for people.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString &message) : std::runtime_error(message.toStdString()) {}
};
