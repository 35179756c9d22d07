#include <PictureFiles.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QDir>
#include <QFileInfo>

#include <utility>

PictureFiles::PictureFiles(qsizetype cacheBytes) : m_pictures(cacheBytes)
{
    connect(&m_watcher, &FileWatcher::changed, this, &PictureFiles::onChanged);
    connect(&m_loader, &PictureLoader::loaded, this, &PictureFiles::onLoaded);
}

void PictureFiles::add(const ImageId &id, const QString &fileName)
{
    const auto name = QDir::cleanPath(QFileInfo(fileName).absoluteFilePath());
    if (m_fileNames.value(id) == name)
        return;
    remove(id);
    m_fileNames.insert(id, name);
    if (!m_files.contains(name))
        m_watcher.add(name);
    m_files[name].ids.insert(id);
}

void PictureFiles::remove(const ImageId &id)
{
    const auto name = m_fileNames.take(id);
    const auto file = m_files.find(name);
    if (file == m_files.end())
        return;
    file->ids.remove(id);
    file->askedFor.remove(id);
    if (!file->ids.isEmpty())
        return;
    m_files.erase(file);
    m_pictures.remove(name);
    m_watcher.remove(name);
}

Image PictureFiles::find(const ImageId &id)
{
    const auto name = m_fileNames.value(id);
    const auto file = m_files.find(name);
    if (file == m_files.end() || !QFileInfo::exists(name))
        return {};

    const bool isQuiet = m_watcher.isQuiet(name); // otherwise it will be loaded soon
    if (const auto *picture = m_pictures.object(name))
        return {id, *picture};
    file->askedFor.insert(id);
    if (isQuiet && !file->isBroken && !m_loader.isLoading(name))
        m_loader.load(name);
    return Image(id);
}

void PictureFiles::onChanged(const QString &fileName)
{
    if (QFileInfo::exists(fileName))
        return m_loader.load(fileName);
    m_pictures.remove(fileName);
    const auto file = m_files.find(fileName);
    if (file == m_files.end())
        return; // nobody's picture any more
    file->digest.clear();
}

void PictureFiles::onLoaded(const QString &fileName, const PictureFile &picture)
{
    const auto file = m_files.find(fileName);
    if (file == m_files.end())
        return; // nobody's picture any more
    file->isBroken = !picture.problem.isEmpty();
    if (file->isBroken) {
        Log4Qt::LogManager::logger(QStringLiteral("images"))
            ->warn(QStringLiteral("Картинка не загружена: %1: %2").arg(fileName, picture.problem));
        return;
    }
    if (!QFileInfo::exists(fileName))
        return; // gone meanwhile, as the watcher will tell

    const Image image(ImageId(), picture.content);
    m_pictures.insert(fileName, new Image(image), picture.content.size());
    const bool differs = std::exchange(file->digest, picture.digest) != picture.digest;
    const auto askedFor = std::exchange(file->askedFor, {});
    const auto ids = differs ? file->ids : askedFor;
    for (const auto &id : ids) {
        // Whoever heard of the one before may have given this one another file.
        if (m_fileNames.value(id) == fileName)
            Q_EMIT loaded(Image(id, image));
    }
}
