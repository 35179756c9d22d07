#pragma once

#include <QStringList>

#include <optional>

/// What the service does wrong when it is subscribed to; each stands for a way in which a real one
/// may fail, so that a register can be shown to bear it.
enum class Fault {
    None,
    Refuse,        ///< closes the connection without an answer
    Status,        ///< answers 500
    Empty,         ///< a body of no bytes
    ShortTag,      ///< a body with no room for the tag
    Iv12,          ///< a vector of 12 bytes
    Iv20,          ///< a vector of 20 bytes, of which the first 16 are meant
    ForeignCurve,  ///< a key on P-384
    ExplicitCurve, ///< the right key, but its curve is given by its parameters
    BadKey,        ///< no key
    Tampered,      ///< one bit of the ciphertext flipped
    NotJson,       ///< a plaintext that is not JSON
    NotObject,     ///< a JSON array
    MissingFields, ///< an object without fields
    StreamAsText,  ///< the stream's number as text
    WrongKey,      ///< a key that the stream refuses
    Endless,       ///< a body that never ends
    NoAnswer,      ///< the request is accepted and never answered
};

/// The fault of that name; none if there is no such name.
std::optional<Fault> faultOfName(const QString &name);
QString nameOf(Fault fault);
/// All names, in the order of the enumeration and without that of `Fault::None`.
QStringList faultNames();
