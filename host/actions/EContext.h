#pragma once

/// The screen of the register in which an action happens.
struct EContext
{
    enum Code : int {
        Sale = 1,    ///< goods are being scanned
        Payment = 6, ///< the buyer is paying
        Any = 255,   ///< as a trigger's context: whatever the screen
    };

    /// What a trigger's handler tells the runner.
    enum Result : int {
        Continue = 2, ///< the action goes on, the next trigger runs; any other value ends the run
    };
};
