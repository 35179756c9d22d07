#pragma once

#include <FileWatcher.h>
#include <HostExport.h>
#include <Image.h>
#include <PictureLoader.h>

#include <QByteArray>
#include <QCache>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

/// Pictures that are kept, in bytes of their files: thousands of usual pictures of goods, eight of
/// the largest. As addresses, which is what is kept of them, they take 8/3 of that.
inline constexpr qsizetype maxCachedPictureBytes = qsizetype{64} * 1024 * 1024;

/**
 * The pictures that are in files: loads them when they are asked for and follows their changes.
 * Several identifiers may share a file, which is then read once.
 *
 * Owner: ImageDao.
 * Thread: that of its creation, which runs events; files are read on another.
 * Errors: a file that holds no picture is told to the log; the picture keeps its earlier content if
 * there is one, and is read again when the file changes.
 * Shut-down: the destructor breaks the reading of a file off; nothing is announced after it.
 */
class HOST_EXPORT PictureFiles : public QObject
{
    Q_OBJECT

public:
    explicit PictureFiles(qsizetype cacheBytes = maxCachedPictureBytes);

    /// The picture `id` is in this file, no longer in another.
    void add(const ImageId &id, const QString &fileName);
    void remove(const ImageId &id);
    bool contains(const ImageId &id) const { return m_fileNames.contains(id); }

    /// The picture as it is at hand; without its content, which is then announced once it is
    /// loaded, or without identifier while there is no file.
    Image find(const ImageId &id);

Q_SIGNALS:
    /// A picture was loaded that `find` has given without content, or that differs from before.
    void loaded(const Image &image);

private:
    struct File
    {
        QSet<ImageId> ids;
        QSet<ImageId> askedFor; // given without content since the file was last loaded
        QByteArray digest;      // of the content announced last
        bool isBroken = false;  // when it was last read
    };

    void onChanged(const QString &fileName);
    void onLoaded(const QString &fileName, const PictureFile &picture);

    QHash<ImageId, QString> m_fileNames;
    QHash<QString, File> m_files;      // by name
    QCache<QString, Image> m_pictures; // by name of the file
    FileWatcher m_watcher;
    PictureLoader m_loader;
};
