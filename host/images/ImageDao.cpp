#include <ImageDao.h>

#include <PictureFiles.h>
#include <SingletonDefinition.h>

template class Singleton<ImageDao>;

ImageDao::ImageDao()
{
    qRegisterMetaType<Image>();
}

ImageDao::~ImageDao() = default;

QSharedPointer<Image> ImageDao::findImage(const ImageId &id) const
{
    if (m_files && m_files->contains(id))
        return QSharedPointer<Image>::create(m_files->find(id));
    const auto found = m_images.value(id);
    return found ? found : QSharedPointer<Image>::create();
}

void ImageDao::store(const Image &image)
{
    if (m_files)
        m_files->remove(image);
    m_images.insert(image, QSharedPointer<Image>::create(image));
    if (image.isLoaded())
        Q_EMIT imageLoaded(image);
}

void ImageDao::addFile(const ImageId &id, const QString &file)
{
    if (!m_files) {
        m_files = std::make_unique<PictureFiles>();
        connect(m_files.get(), &PictureFiles::loaded, this, &ImageDao::imageLoaded);
    }
    m_images.remove(id);
    m_files->add(id, file);
}
