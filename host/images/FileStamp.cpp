#include <FileStamp.h>

#include <QFile>

#include <sys/stat.h>

std::optional<FileStamp> stampOf(const QString &fileName)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(fileName).constData(), &status) != 0)
        return std::nullopt;
    return FileStamp{status.st_ino, status.st_size, status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}
