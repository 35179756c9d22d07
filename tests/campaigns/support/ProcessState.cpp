#include "ProcessState.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace campaign {

namespace {

int entriesOf(const char *folder)
{
    return static_cast<int>(QDir(QLatin1String(folder))
                                .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                                .size());
}

qint64 residentMemory()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    return statm.readAll().split(' ').at(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

} // namespace

ProcessState ProcessState::now()
{
    constexpr int ofTheListing = 1; // the folder of the descriptors is open while it is read
    return {entriesOf("/proc/self/task"), entriesOf("/proc/self/fd") - ofTheListing,
            residentMemory()};
}

qint64 peakBytes()
{
    constexpr qint64 kilobyte = 1024;
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const auto text = status.readAll();
    const auto value = text.mid(text.indexOf("VmHWM:") + 6).simplified();
    return value.left(value.indexOf(' ')).toLongLong() * kilobyte;
}

void forgetPeak()
{
    QFile references(QStringLiteral("/proc/self/clear_refs"));
    if (references.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        references.write("5"); // the number for that, of proc(5)
}

} // namespace campaign
