#include <adservice/AdFolder.h>

#include <QDir>
#include <QFile>
#include <QMimeDatabase>

/// The name is looked for in the folder's list and never becomes part of a path by itself: whatever
/// it holds, it leads nowhere else.
std::optional<AdFolder::Ad> AdFolder::find(const QString &name) const
{
    if (m_folder.isEmpty())
        return std::nullopt;
    const auto entries = QDir(m_folder).entryInfoList(QDir::Files | QDir::NoSymLinks);
    for (const QFileInfo &entry : entries) {
        if (entry.fileName() != name)
            continue;
        QFile file(entry.filePath());
        if (!file.open(QIODevice::ReadOnly))
            return std::nullopt;
        return Ad{QMimeDatabase().mimeTypeForFile(entry).name().toLatin1(), file.readAll()};
    }
    return std::nullopt;
}
