#pragma once

#include <QString>

/// Prints a line with the time, what it is about and what happened. Lines of different threads do
/// not mix.
void printEvent(const QString &subject, const QString &text);
