#pragma once

#include <QByteArray>
#include <QString>

/// The QR code of a text as SVG, black on white with its quiet zone, as small as the text allows;
/// empty for no text and for one that is too long for any QR code (about 2900 bytes of UTF-8).
QByteArray qrPicture(const QString &text);
