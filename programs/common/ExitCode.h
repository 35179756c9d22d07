#pragma once

/// What a program's exit tells the caller.
enum ExitCode : int {
    Fine = 0,
    Failed = 1,   ///< something that was asked for failed
    Unusable = 2, ///< the options, the configuration or the plug-in cannot be used
};
