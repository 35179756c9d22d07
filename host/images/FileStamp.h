#pragma once

#include <HostExport.h>

#include <QString>

#include <optional>

/// Tells one state of a file from another without reading it. The time of change, unlike that of
/// modification, cannot be set by who copies the file.
struct FileStamp
{
    quint64 inode = 0;
    qint64 size = 0;          ///< bytes
    qint64 changedSecond = 0; ///< since 1970
    qint64 changedNanosecond = 0;

    bool operator==(const FileStamp &) const = default;
};

/// That of whatever has this name, a link being followed; empty if nothing has.
HOST_EXPORT std::optional<FileStamp> stampOf(const QString &fileName);
