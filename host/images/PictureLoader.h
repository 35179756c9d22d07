#pragma once

#include <HostExport.h>
#include <PictureFile.h>

#include <QObject>
#include <QStringList>
#include <QThreadPool>

/**
 * Reads pictures on a thread of its own, one after the other in the order they were asked for.
 *
 * Owner: PictureFiles.
 * Thread: that of its creation; only the reading is done on the loader's thread. The next file is
 * read once the one before has been taken, so that contents do not pile up behind a busy thread.
 * Errors: told with the result.
 * Shut-down: the destructor waits for the file being read and drops the others; nothing is told
 * after it.
 */
class HOST_EXPORT PictureLoader : public QObject
{
    Q_OBJECT

public:
    PictureLoader();

    /// Reads a file, once for all who ask before its turn.
    void load(const QString &fileName);
    bool isLoading(const QString &fileName) const;

Q_SIGNALS:
    void loaded(const QString &fileName, const PictureFile &picture);

private:
    void startNext();
    void finish(const PictureFile &picture);

    QString m_current; // the one being read, empty if none
    QStringList m_waiting;
    QThreadPool m_pool; // last, hence destroyed first: that waits
};
