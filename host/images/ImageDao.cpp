#include <ImageDao.h>

#include <SingletonDefinition.h>

template class Singleton<ImageDao>;

ImageDao::ImageDao()
{
    qRegisterMetaType<Image>();
}

ImageDao::~ImageDao() = default;

QSharedPointer<Image> ImageDao::findImage(const ImageId &id) const
{
    const auto found = m_images.value(id);
    return found ? found : QSharedPointer<Image>::create();
}

void ImageDao::store(const Image &image)
{
    m_images.insert(image, QSharedPointer<Image>::create(image));
    if (image.isLoaded())
        Q_EMIT imageLoaded(image);
}
