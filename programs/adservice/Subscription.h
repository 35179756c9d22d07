#pragma once

#include <adservice/Answer.h>
#include <adservice/Fault.h>

#include <QString>

#include <optional>

/// What a subscriber is told about the stream.
struct Announcement
{
    QString listen; ///< HOST:PORT
    int stream = 0;
    QString key;

    /// A key that nobody can guess.
    static QString randomKey();
};

/**
 * The answer to a subscription: `request` is a JSON object whose "pk" is the subscriber's public
 * key; the announcement goes back encrypted under the key that both sides agree on. 400 with the
 * reason for what is no such request; nothing for a fault that leaves the request without an
 * answer.
 */
std::optional<Answer> answerSubscription(const QByteArray &request,
                                         const Announcement &announcement, Fault fault);
