#pragma once

#include <HostExport.h>
#include <Image.h>
#include <Singleton.h>

#include <QMap>
#include <QObject>
#include <QSharedPointer>

/**
 * The host's store of pictures, in memory.
 *
 * Owner: the host, as Singleton<ImageDao>.
 * Thread: the host's main thread.
 * Errors: none; an unknown picture is one whose identifier text is empty.
 */
class HOST_EXPORT ImageDao : public QObject
{
    Q_OBJECT

public:
    ImageDao();
    ~ImageDao() override;

    /// The picture `id`, never null; for an unknown one an image with an empty identifier.
    virtual QSharedPointer<Image> findImage(const ImageId &id) const;

    /// Stores a picture, replacing the one with the same identifier, and announces it if it is
    /// loaded.
    void store(const Image &image);

Q_SIGNALS:
    /// A picture has been loaded, for the first time or anew. Emitted on the host's main thread.
    void imageLoaded(const Image &image);

private:
    QMap<ImageId, QSharedPointer<Image>> m_images;
};

extern template class HOST_EXPORT Singleton<ImageDao>;
