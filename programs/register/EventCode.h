#pragma once

/// The events of the register that concern the customer's screen.
enum EventCode : int {
    DialogClosed = 103,
    PriceListDialog = 117,
    QrPaymentDialog = 184,
    SecondScreenContent = 261,
    PaymentDraftUpdate = 266,
};
