#pragma once

#include <HostExport.h>
#include <PictureFile.h>

#include <QObject>
#include <QStringList>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

/**
 * Reads pictures on a thread of its own, one after the other in the order they were asked for.
 *
 * Owner: PictureFiles.
 * Thread: that of its creation; only the reading is done on the loader's thread. The next file is
 * read once the one before has been taken, so that contents do not pile up behind a busy thread.
 * Errors: told with the result. The thread is none of Qt's, which end the process if there is no
 * descriptor for their event loop.
 * Shut-down: the destructor breaks the reading off and drops the other files; nothing is told after
 * it.
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
    void run(const std::stop_token &stop); // on the loader's thread
    void finish(const PictureFile &picture);

    QString m_current; // the one being read, empty if none
    QStringList m_waiting;
    std::mutex m_mutex;
    std::optional<QString> m_asked; // guarded by m_mutex; taken by the thread
    std::condition_variable_any m_isAsked;
    std::jthread m_thread; // last: it uses all the others
};
