#pragma once

#include <QString>

/// Prints a line on standard output, at once and whole: lines of different threads do not mix.
void printLine(const QString &line);

/// Prints what has just happened: the time of day, its kind and a few words.
void printEvent(const QString &kind, const QString &text);
