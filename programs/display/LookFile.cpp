#include <display/LookFile.h>

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QUrl>

namespace {

constexpr qint64 maxBytes = 16'777'216; // 16 MiB

QString fileName(const QString &path)
{
    const QUrl url(path);
    return url.isLocalFile() ? url.toLocalFile() : path;
}

} // namespace

LookFile LookFile::read(const QJsonValue &path)
{
    QFile file(fileName(path.toString()));
    if (file.fileName().isEmpty() || !QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    auto content = file.read(maxBytes + 1); // some of the system's files tell no size
    if (content.size() > maxBytes)
        return {};
    content.squeeze(); // of what was kept free for the largest
    const auto type = QMimeDatabase().mimeTypeForFileNameAndData(file.fileName(), content).name();
    return type.startsWith(u"image/") ? LookFile{type, content} : LookFile{};
}
