#pragma once

#include <QString>

/// From now on log lines go to standard error as `<ISO time> <LEVEL> <logger> <message>`, from INFO
/// up, with `debug` from DEBUG up. Lines from different threads do not mix.
void logToStandardError(bool debug);
