#pragma once

#include <QString>

/// Whether a property of this name tells who the buyer is, how to reach or recognise him, or lets
/// somebody act in his or the shop's name, whatever its value looks like.
bool isPersonalName(const QString &name);

/// Whether a property of this name holds what a payment code says, or an address to pay at.
bool isPaymentCodeName(const QString &name);
