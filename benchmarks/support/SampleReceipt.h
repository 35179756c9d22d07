#pragma once

#include <Receipt.h>

#include <QSharedPointer>
#include <QVariantMap>

namespace bench {

/// What all contenders work on. Thread: that of the caller.

/// So many positions are about 4 KB of JSON.
constexpr int positionsOf4Kb = 19;

/// One line of a receipt, a little different for each number.
Position position(int number);

/// A receipt of so many positions.
QSharedPointer<Receipt> receiptOf(int positions);

/// Changes one position, as a corrected quantity does; the receipt must have one.
void change(Receipt &receipt);

/// The receipt's properties as a display gets them.
QVariantMap payloadOf(const Receipt &receipt);

/// A goods picture whose data: URI has `characters` characters.
QVariantMap pictureOf(int characters);

} // namespace bench
