#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// What became of a request: a message of a known type, or a refusal with its HTTP status and
/// reason.
struct ReceivedMessage
{
    QString type; ///< empty if the path is none of a message
    QJsonObject body;
    int status = 200;
    QString refusal; ///< for people; empty if the message was accepted
};

/// The deepest nesting of arrays and objects in a message that is accepted.
inline constexpr int maxMessageDepth = 64;

/// The most values in one: as many as a price list of tens of thousands of goods has. In memory
/// each takes tens of times its text.
inline constexpr int maxMessageValues = 1'000'000;

/// Checks a request as a message of the register: POST, a known path, a JSON object, neither nested
/// too deeply nor of too many values.
ReceivedMessage readMessage(const QString &method, const QString &path, const QByteArray &content);
