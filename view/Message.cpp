#include <view/Message.h>

namespace view {

// NOLINTNEXTLINE(modernize-pass-by-value): the contract with the host has a reference
Message::Message(Type messageType, const QVariantMap &messageData)
    : type(messageType), data(messageData)
{
}

} // namespace view
