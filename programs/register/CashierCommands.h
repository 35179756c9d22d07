#pragma once

class Cashier;
class Commands;

/// Adds the commands that name what a cashier does: open, sell, void, discount, qr, prices, scroll,
/// draft, content, close-dialog, pay. `cashier` must outlive the commands.
void addCashierCommands(Commands &commands, Cashier &cashier);
