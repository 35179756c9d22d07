#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// What a target does with an input, which may be anything. Each target's program defines it once.
/// Thread: the main one, with a QCoreApplication whose events are run only as the target asks.
/// Errors: none may get out; what breaks a promise ends the program.
void fuzzOne(const QByteArray &input);

/// What the targets share.
namespace fuzz {

/// Ends the program with `promise` on standard error, unless it is kept.
void require(bool kept, const char *promise);

/// The lines of `input`, without their ends; the last of `count` goes on to the end of the input,
/// and those that are missing are empty.
QList<QByteArray> fields(const QByteArray &input, int count);

/// Puts `content` in a file, the same one each time, and returns its name.
QString inFile(const QByteArray &content);

} // namespace fuzz
