#pragma once

#include <HostExport.h>

#include <QByteArray>
#include <QString>

#include <stop_token>

/// Largest file that is read. A picture goes to the display as text, a third longer, in one message
/// that must be posted within the time-out of a second or two.
inline constexpr qint64 maxPictureFileBytes = qint64{8} * 1024 * 1024;

/// A picture as it was read from a file, or why it could not be. A value type.
struct PictureFile
{
    QByteArray content;
    QByteArray digest; ///< of the content, to tell whether a later one differs
    QString problem;   ///< in words for the log; empty if the picture was read
};

/// Reads and checks a picture. Whatever has this name, it neither blocks on it, as on a pipe, nor
/// reads more than the limit, nor goes on after a stop. Any thread.
HOST_EXPORT PictureFile readPictureFile(const QString &fileName, const std::stop_token &stop = {});

/// Reads what is called a picture without a look at its content, and without a digest. It does not
/// block and reads no more than that either. Any thread.
HOST_EXPORT PictureFile readUncheckedPictureFile(const QString &fileName);
