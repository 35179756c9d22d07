#pragma once

#include <register/RegisterOptions.h>

/// Checks the display that `options` name, tells the results on standard output and in the report,
/// and returns the program's exit code. Throws UsageError or PluginError.
int runCheck(const RegisterOptions &options);
