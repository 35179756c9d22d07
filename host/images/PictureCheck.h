#pragma once

#include <HostExport.h>

#include <QByteArray>
#include <QString>

#include <chrono>
#include <stop_token>

/// Largest picture that is shown. A display unpacks it to four bytes a pixel, here 128 MB, however
/// small the file is.
inline constexpr qint64 maxPicturePixels = 32'000'000;

/// How much of the processor's time a picture may take to be unpacked; the largest takes a second
/// on a slow register.
inline constexpr std::chrono::seconds maxPictureTime{5};

/// Why a display could not show this content, in words for the log; empty if it can. A stop ends
/// the reading within a second. Any thread.
HOST_EXPORT QString pictureProblem(const QByteArray &content, const std::stop_token &stop = {});
