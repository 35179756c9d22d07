#pragma once

#include <view/Message.h>

#include <QList>
#include <QMap>

#include <optional>

namespace view {

/**
 * The messages that wait for the display: the newest of each type, and every picture.
 *
 * A new message replaces the one of its type that still waits, so a burst of receipt changes costs
 * one entry; pictures (ImageData) all wait, in the order of their arrival. The lowest type goes
 * first.
 *
 * Owner: a Locker, shared by the producer and the client.
 * Thread: none of its own; the caller holds the Locker's mutex. What `insert` and `remove` take out
 * is handed to the caller, to be kept until the mutex is free: a value of the host's may call back
 * as it goes. For the same reason the plug-in swaps the whole queue instead of clearing it.
 * Errors: none.
 */
class Messages
{
public:
    /// Returns what it replaces.
    QList<Message> insert(const Message &message);

    /// Takes out what `first` gives for this type: the oldest picture, or the one message of any
    /// other type, which may be a newer one than was posted: that one is not sent. A type that is
    /// not waiting is ignored.
    QList<Message> remove(Message::Type type);

    /// Whether `remove` would take out this very message.
    bool isNextOfItsType(const Message &message) const;

    /// The message to send next; empty when none waits.
    std::optional<Message> first() const;

    bool isEmpty() const { return m_messages.isEmpty(); }

    /// The number of types that wait; any number of pictures counts once.
    qsizetype count() const { return m_messages.size(); }

    void clear() { m_messages.clear(); }

private:
    // No list is empty; all but that of ImageData hold one message.
    QMap<Message::Type, QList<Message>> m_messages;
};

} // namespace view
