#pragma once

#include <QString>

/// The keys of an advertisement in the timetable, which are those of the message that shows it.
namespace AdEntry {

inline const auto id = QStringLiteral("id");       ///< text; absent for a stream
inline const auto index = QStringLiteral("index"); ///< integer, the place in the order
inline const auto url = QStringLiteral("url");     ///< text; a QUrl for a stream
inline const auto time = QStringLiteral("time");   ///< integer, seconds, at least 1

} // namespace AdEntry
