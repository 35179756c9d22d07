#pragma once

#include <QJsonValue>
#include <QString>

/**
 * Replaces what could identify a buyer, a payment or a credential, and keeps type and shape: a
 * replay draws the same layout. What is replaced is the same after a second time.
 *
 * What people write in plain words, such as a name in a greeting, is not recognised, nor are
 * numbers of fewer than nine digits. Where a text cannot be searched, all of it is masked.
 *
 * Thread: any; there is no state. Errors: none.
 */
class Redaction
{
public:
    /// A body: its texts, and what stands under a personal name.
    static QJsonValue value(const QJsonValue &value);
    /// A text of any kind: pictures, addresses, credentials, e-mail addresses and long numbers in
    /// it.
    static QString text(const QString &text);
    /// The path of a request with its query.
    static QString path(const QString &path);
};
