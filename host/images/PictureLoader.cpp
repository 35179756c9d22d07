#include <PictureLoader.h>

#include <utility>

PictureLoader::PictureLoader()
{
    m_pool.setMaxThreadCount(1);
}

void PictureLoader::load(const QString &fileName)
{
    if (!m_waiting.contains(fileName))
        m_waiting.append(fileName);
    startNext();
}

bool PictureLoader::isLoading(const QString &fileName) const
{
    return m_current == fileName || m_waiting.contains(fileName);
}

void PictureLoader::startNext()
{
    if (!m_current.isEmpty() || m_waiting.isEmpty())
        return;
    m_current = m_waiting.takeFirst();
    m_pool.start([this, fileName = m_current] {
        auto picture = readPictureFile(fileName);
        QMetaObject::invokeMethod(
            this, [this, picture = std::move(picture)] { finish(picture); }, Qt::QueuedConnection);
    });
}

void PictureLoader::finish(const PictureFile &picture)
{
    const auto fileName = std::exchange(m_current, {});
    startNext();
    Q_EMIT loaded(fileName, picture);
}
