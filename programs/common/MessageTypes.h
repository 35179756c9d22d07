#pragma once

#include <QString>

#include <array>

/// One kind of message that a display receives: the name people use for it and its path.
struct MessageType
{
    const char *name;
    const char *path;
};

/// In the order of their urgency.
inline constexpr std::array messageTypes{
    MessageType{"Configure", "/configure"}, MessageType{"UpdateDocument", "/updateDocument"},
    MessageType{"QrPayment", "/qrPayment"}, MessageType{"ShowAd", "/showAD"},
    MessageType{"PriceList", "/priceList"}, MessageType{"ImageData", "/image"},
    MessageType{"Content", "/content"},     MessageType{"PaymentDraft", "/paymentdraft"},
};

/// The name of the type that is posted to `path`; empty for a path that is none of them.
QString messageTypeOfPath(const QString &path);

bool isMessageType(const QString &name);
