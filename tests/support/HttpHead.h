#pragma once

#include <QByteArray>

namespace support {

/// The size of the body that a head, from its first line to the empty one, announces; 0 if none.
qsizetype contentLength(const QByteArray &head);

} // namespace support
