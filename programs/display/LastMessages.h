#pragma once

#include <display/KeptMessage.h>

#include <QJsonArray>
#include <QList>

#include <optional>

/**
 * The messages that still matter: what a screen needs to be told to show what was shown last.
 *
 * The newest of each type, every picture, and how far a price list was scrolled; a message that
 * closes or hides something takes that out. A receipt that is paid, or another one, takes out what
 * was to be paid for the one before. The settings of the register come when it starts: they take
 * out all the rest.
 *
 * Owner: the customer's screen. Thread: the main thread. A value type.
 */
class LastMessages
{
public:
    /// Pictures beyond these are forgotten, the oldest first.
    static constexpr qint64 maxPictureBytes = 33'554'432; // 32 MiB
    static constexpr qsizetype maxPictures = 2000;        // more goods than a receipt has

    void keep(const KeptMessage &message);
    void clear() { m_messages.clear(); }

    /// In the order of their arrival.
    const QList<KeptMessage> &all() const { return m_messages; }
    QJsonArray toJson() const;
    /// The one of this type; for a price list what opened it.
    std::optional<KeptMessage> find(const QString &type) const;

private:
    void remove(const QString &type);
    void endPayments(const QJsonObject &receipt);
    void keepPicture(KeptMessage message);
    void keepScroll(KeptMessage message);

    QList<KeptMessage> m_messages;
};
