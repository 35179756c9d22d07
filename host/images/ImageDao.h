#pragma once

#include <HostExport.h>
#include <Image.h>
#include <Singleton.h>

#include <QMap>
#include <QObject>
#include <QSharedPointer>
#include <QString>

#include <memory>

class PictureFiles;

/**
 * The host's store of pictures: those it was given, and those in files, which are loaded when they
 * are asked for and followed as they change.
 *
 * Owner: the host, as Singleton<ImageDao>.
 * Thread: that of its creation, the host's main thread, which runs events; files are read on
 * another. Errors: none; an unknown picture is one whose identifier text is empty. A file that
 * holds no picture is told to the log, and its picture is as it was before, or not loaded.
 * Shut-down: the destructor waits for the file being read; nothing is announced after it. A host
 * that has added files takes the store away while QCoreApplication still exists: the reading needs
 * it.
 */
class HOST_EXPORT ImageDao : public QObject
{
    Q_OBJECT

public:
    ImageDao();
    ~ImageDao() override;

    /// The picture `id`, never null; for an unknown one an image with an empty identifier. A
    /// picture in a file is unknown while there is no such file; one whose content is not at hand
    /// is given without it and announced once it is loaded. Does not wait for the reading.
    virtual QSharedPointer<Image> findImage(const ImageId &id) const;

    /// Stores a picture, replacing the one with the same identifier, and announces it if it is
    /// loaded. It is no longer looked for in a file.
    void store(const Image &image);

    /// The picture `id` is in this file, or will be, instead of what was stored for it. It is
    /// announced when the file appears later and each time that the picture in it changes.
    void addFile(const ImageId &id, const QString &file);

Q_SIGNALS:
    /// A picture has been loaded, for the first time or anew. Emitted on the host's main thread.
    void imageLoaded(const Image &image);

private:
    QMap<ImageId, QSharedPointer<Image>> m_images; // those without a file
    std::unique_ptr<PictureFiles> m_files;         // null until a file is added
};

extern template class HOST_EXPORT Singleton<ImageDao>;
