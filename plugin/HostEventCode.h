#pragma once

/// The events of the register that the plug-in follows, by the host's codes.
enum class HostEventCode : int {
    DialogClosed = 103,
    PriceListDialog = 117,
    QrPaymentDialog = 184,
    SecondScreenContent = 261,
    PaymentDraftUpdate = 266,
};
