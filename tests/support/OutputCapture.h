#pragma once

#include <QByteArray>

#include <cstdio>
#include <functional>

namespace support {

/// What `work` writes to `stream`, stdout or stderr, which shows none of it meanwhile. Also what
/// other libraries write to the stream's descriptor is caught. Expectations belong after it: the
/// text of one that fails within it would be caught too.
QByteArray outputOf(std::FILE *stream, const std::function<void()> &work);

} // namespace support
