#include <FileWatcher.h>

#include <QFileInfo>
#include <QTimerEvent>

#include <algorithm>
#include <chrono>

namespace {

using namespace std::chrono_literals;

/// Quiet time after which a file counts as written to its end, and in which changes of a folder are
/// gathered.
constexpr std::chrono::milliseconds settlingTime = 100ms;

QString folderOf(const QString &path)
{
    return QFileInfo(path).path();
}

QString nearestFolder(QString path)
{
    while (!QFileInfo(path).isDir())
        path = folderOf(path);
    return path;
}

} // namespace

FileWatcher::FileWatcher()
{
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &FileWatcher::onFileChanged);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FileWatcher::scheduleScan);
}

void FileWatcher::add(const QString &fileName)
{
    watch(fileName);
    m_files[fileName].stamp = stampOf(fileName);
    scheduleScan(); // which watches its folder and sees what changed until then
}

void FileWatcher::remove(const QString &fileName)
{
    m_files.erase(fileName);
    m_watcher.removePath(fileName);
}

bool FileWatcher::isQuiet(const QString &fileName)
{
    const auto file = m_files.find(fileName);
    if (file == m_files.end())
        return true;
    lookAt(fileName, file->second);
    return !file->second.settling.isActive();
}

void FileWatcher::lookAt(const QString &fileName, File &file)
{
    if (const auto stamp = stampOf(fileName); stamp != file.stamp) {
        file.stamp = stamp;
        settle(fileName, file);
    }
}

void FileWatcher::onFileChanged(const QString &fileName)
{
    const auto file = m_files.find(fileName);
    if (file != m_files.end())
        settle(fileName, file->second);
}

/// Tells of the change unless a further one comes before it has settled.
void FileWatcher::settle(const QString &fileName, File &file)
{
    watch(fileName);
    file.settling.start(static_cast<int>(settlingTime.count()), this);
}

void FileWatcher::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_scan.timerId()) {
        m_scan.stop();
        scan();
        return;
    }
    const auto settled = std::find_if(m_files.begin(), m_files.end(), [&](const auto &file) {
        return file.second.settling.timerId() == event->timerId();
    });
    if (settled == m_files.end())
        return QObject::timerEvent(event);
    settled->second.settling.stop();
    settled->second.stamp = stampOf(settled->first);
    const auto fileName = settled->first; // whoever hears of it may remove the file
    Q_EMIT changed(fileName);
}

/// Watches what has this name now instead of what had it before.
void FileWatcher::watch(const QString &path)
{
    m_watcher.removePath(path);
    if (QFileInfo(path).isReadable())
        m_watcher.addPath(path);
}

/// Watches the folder of each file or, until it exists, the nearest one above it. The folder above
/// is watched too: a folder that is replaced does not tell so itself.
void FileWatcher::watchFolders()
{
    QStringList folders;
    for (const auto &[fileName, file] : m_files)
        folders.append(nearestFolder(folderOf(fileName)));
    folders.removeDuplicates();

    const auto before = m_watcher.directories();
    if (!before.isEmpty())
        m_watcher.removePaths(before);
    for (const auto &folder : folders) {
        watch(folder);
        watch(folderOf(folder));
    }
}

/// Not put off by further changes: a folder may never be quiet.
void FileWatcher::scheduleScan()
{
    if (!m_scan.isActive())
        m_scan.start(static_cast<int>(settlingTime.count()), this);
}

void FileWatcher::scan()
{
    watchFolders(); // first, so that no change falls between
    for (auto &[fileName, file] : m_files)
        lookAt(fileName, file);
}
