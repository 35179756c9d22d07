#include <view/Message.h>

namespace view {

Message::Message(Type messageType, const QVariantMap &messageData)
    : type(messageType), data(messageData)
{
}

} // namespace view
