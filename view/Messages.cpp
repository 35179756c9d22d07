#include <view/Messages.h>

#include <utility>

namespace view {

QList<Message> Messages::insert(const Message &message)
{
    auto waiting = m_messages.find(message.type);
    if (message.type == Message::Type::ImageData && waiting != m_messages.end()) {
        waiting->append(message);
        return {};
    }
    QList<Message> only{message}; // made first: without memory for it the queue stays as it is
    if (waiting != m_messages.end())
        return std::exchange(*waiting, std::move(only));
    m_messages.insert(message.type, only);
    return {};
}

QList<Message> Messages::remove(Message::Type type)
{
    const auto waiting = m_messages.find(type);
    if (waiting == m_messages.end())
        return {};
    if (type == Message::Type::ImageData && waiting->size() > 1)
        return {waiting->takeFirst()};
    auto removed = *waiting;
    m_messages.erase(waiting);
    return removed;
}

bool Messages::isNextOfItsType(const Message &message) const
{
    const auto waiting = m_messages.constFind(message.type);
    return waiting != m_messages.cend() && waiting->constFirst() == message;
}

std::optional<Message> Messages::first() const
{
    if (m_messages.isEmpty())
        return std::nullopt;
    return m_messages.first().constFirst();
}

} // namespace view
