#include <view/Messages.h>

namespace view {

void Messages::insert(const Message &message)
{
    if (message.type == Message::Type::ImageData)
        m_messages[message.type].append(message);
    else
        m_messages.insert(message.type, {message});
}

void Messages::remove(Message::Type type)
{
    const auto waiting = m_messages.find(type);
    if (waiting == m_messages.end())
        return;
    if (type == Message::Type::ImageData && waiting->size() > 1)
        waiting->removeFirst();
    else
        m_messages.erase(waiting);
}

std::optional<Message> Messages::first() const
{
    if (m_messages.isEmpty())
        return std::nullopt;
    return m_messages.first().constFirst();
}

} // namespace view
