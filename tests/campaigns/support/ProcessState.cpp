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

} // namespace campaign
