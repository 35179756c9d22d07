#pragma once

#include <QString>

/// One grey point, as a `data:` URI: stands for every picture.
extern const QString greyPicture;

/// A text without its pictures, secrets of addresses, credentials after their names, e-mail
/// addresses and long numbers.
QString redactedText(const QString &text);
