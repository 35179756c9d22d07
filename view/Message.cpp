#include <view/Message.h>

namespace view {

// Its signature belongs to the contract with the host.
// NOLINTNEXTLINE(modernize-pass-by-value)
Message::Message(Type messageType, const QVariantMap &messageData)
    : type(messageType), data(messageData)
{
}

} // namespace view
