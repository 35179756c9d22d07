#include <view/Message.h>

namespace view {

// NOLINTNEXTLINE(modernize-pass-by-value): the signature belongs to the contract with the host
Message::Message(Type messageType, const QVariantMap &messageData)
    : type(messageType), data(messageData)
{
}

} // namespace view
