#pragma once

#include <QByteArray>

/// The answer of an ad service, as an input spoils it. A value type.
///
/// An input is a byte of choices and three lines: what is made of the key, of the vector and of the
/// body. Bits 0 and 1 say what the first line is: nothing at all, the field "X-PK" as it is sent,
/// which bits of the right key are flipped, or a key in DER. Bits 2 and 3 say the same of the
/// second line and "X-IV". Bits 4 and 5 say what the third is: the plaintext, the body as it is
/// sent, which bits of a right body are flipped, or what follows a right body.
struct AdAnswerInput
{
    explicit AdAnswerInput(const QByteArray &input);

    /// The register's own private key in DER.
    static QByteArray ownKey();

    QByteArray keyField;
    QByteArray ivField;
    QByteArray body;
    QByteArray plaintext; ///< of the body, if that is authentic
    bool isAuthentic;     ///< nothing was spoilt that a register could notice
};
