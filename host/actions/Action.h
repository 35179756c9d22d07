#pragma once

#include <EContext.h>

namespace control {

enum EActionType : int {
    PaymentChanged = 131,
    ReceiptStateChanged = 137,
    ReceiptChanged = 197,
};

/// Something the cashier did: the kind of action and the screen it happened in.
struct Action
{
    EContext::Code context = EContext::Any;
    EActionType type = ReceiptChanged;
};

} // namespace control
