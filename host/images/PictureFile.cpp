#include <PictureFile.h>

#include <PictureCheck.h>

#include <QCryptographicHash>
#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

PictureFile problem(const QString &text)
{
    return {{}, {}, text};
}

PictureFile unreadable(const QString &reason)
{
    return problem(QStringLiteral("не читается: %1").arg(reason));
}

PictureFile readOpenFile(QFile &file)
{
    const auto content = file.read(maxPictureFileBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return unreadable(file.errorString());
    if (content.isEmpty())
        return problem(QStringLiteral("файл пуст"));
    if (content.size() > maxPictureFileBytes)
        return problem(QStringLiteral("файл больше %1 байт").arg(maxPictureFileBytes));
    return {content, {}, {}};
}

} // namespace

PictureFile readPictureFile(const QString &fileName, const std::stop_token &stop)
{
    auto picture = readUncheckedPictureFile(fileName);
    if (!picture.problem.isEmpty())
        return picture;
    if (const auto text = pictureProblem(picture.content, stop); !text.isEmpty())
        return problem(text);
    picture.digest = QCryptographicHash::hash(picture.content, QCryptographicHash::Sha256);
    return picture;
}

PictureFile readUncheckedPictureFile(const QString &fileName)
{
    // What is asked about is what is read, even if the name comes to mean something else meanwhile.
    const int descriptor =
        ::open(QFile::encodeName(fileName).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return unreadable(qt_error_string(errno));
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                   QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return unreadable(file.errorString());
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return problem(QStringLiteral("это не файл"));
    return readOpenFile(file);
}
