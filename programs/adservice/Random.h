#pragma once

#include <QByteArray>

/// Bytes that nobody can guess.
QByteArray randomBytes(qsizetype count);
