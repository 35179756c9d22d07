#include <PictureLoader.h>

#include <utility>

PictureLoader::PictureLoader() : m_thread([this](const std::stop_token &stop) { run(stop); }) {}

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
    {
        const std::lock_guard guard(m_mutex);
        m_asked = m_current;
    }
    m_isAsked.notify_one();
}

void PictureLoader::run(const std::stop_token &stop)
{
    std::unique_lock lock(m_mutex);
    while (m_isAsked.wait(lock, stop, [this] { return m_asked.has_value(); }) &&
           !stop.stop_requested()) {
        const auto fileName = *std::exchange(m_asked, std::nullopt);
        lock.unlock();
        QMetaObject::invokeMethod(
            this, [this, picture = readPictureFile(fileName, stop)] { finish(picture); },
            Qt::QueuedConnection);
        lock.lock();
    }
}

void PictureLoader::finish(const PictureFile &picture)
{
    const auto fileName = std::exchange(m_current, {});
    startNext();
    Q_EMIT loaded(fileName, picture);
}
