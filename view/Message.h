#pragma once

#include <QVariantMap>

namespace view {

/// Something to tell the customer display: a type, which selects the display's endpoint, and a map
/// that becomes the JSON body. A value type, cheap to copy: the map is implicitly shared.
class Message
{
public:
    /// The order of the values is the order of delivery: the lowest goes first.
    enum class Type : qint32 {
        Configure = 0,
        UpdateDocument = 1,
        QrPayment = 2,
        ShowAd = 3,
        PriceList = 4,
        ImageData = 5,
        Content = 6,
        PaymentDraft = 7,
    };

    Message(Type messageType, const QVariantMap &messageData);

    bool operator==(const Message &other) const = default;

    Type type;
    QVariantMap data;
};

} // namespace view
