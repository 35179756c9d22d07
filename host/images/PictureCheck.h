#pragma once

#include <HostExport.h>

#include <QByteArray>
#include <QString>

/// Largest picture that is shown. A display unpacks it to four bytes a pixel, here 128 MB, however
/// small the file is.
inline constexpr qint64 maxPicturePixels = 32'000'000;

/// Why a display could not show this content, in words for the log; empty if it can. Any thread.
HOST_EXPORT QString pictureProblem(const QByteArray &content);
