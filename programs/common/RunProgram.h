#pragma once

#include <functional>

/// Runs what a program does and returns its exit code. An error that says why it cannot be done
/// (UsageError, ConfigError, PluginError) becomes a line on standard error, and Unusable.
int runProgram(const char *name, const std::function<int()> &body);
