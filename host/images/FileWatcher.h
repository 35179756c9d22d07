#pragma once

#include <FileStamp.h>
#include <HostExport.h>

#include <QBasicTimer>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>

#include <map>
#include <optional>

/**
 * Tells when files appear, change or vanish, once each change has settled.
 *
 * A watched folder tells that files in it appear, vanish or are replaced, but not that one is
 * written in place; a watched file tells that, but follows the file when its name passes to
 * another. Hence both are watched, and afresh after each change.
 *
 * Owner: PictureFiles.
 * Thread: that of its creation, which runs events.
 * Errors: a change of what the system cannot watch (a folder that may not be read, too many files)
 * is noticed when `isQuiet` is asked. Shut-down: the destructor ends all of it.
 */
class HOST_EXPORT FileWatcher : public QObject
{
    Q_OBJECT

public:
    FileWatcher();

    /// File names are absolute; neither the file nor its folder need exist.
    void add(const QString &fileName);
    void remove(const QString &fileName);

    /// Looks at the file. Returns false if it changed and `changed` has still to tell so: it may be
    /// half written.
    bool isQuiet(const QString &fileName);

Q_SIGNALS:
    /// The file may differ from what it was; it may also be gone.
    void changed(const QString &fileName);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct File
    {
        std::optional<FileStamp> stamp; // as it was last seen
        QBasicTimer settling;
    };

    void lookAt(const QString &fileName, File &file);
    void onFileChanged(const QString &fileName);
    void settle(const QString &fileName, File &file);
    void watch(const QString &path);
    void watchFolders();
    void scheduleScan();
    void scan();

    QFileSystemWatcher m_watcher;
    std::map<QString, File> m_files; // by name
    QBasicTimer m_scan;              // runs after a change of a folder
};
