#include <support/ContextSwitches.h>

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <unistd.h>

namespace support {

ContextSwitches contextSwitchesOf(pid_t thread)
{
    QFile file(QStringLiteral("/proc/self/task/%1/status").arg(thread));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const auto status = file.readAll();
    const auto number = [&](const QByteArray &field) {
        const auto start = status.indexOf('\n' + field + ':') + field.size() + 2;
        return status.mid(start, status.indexOf('\n', start) - start).trimmed().toLongLong();
    };
    return {number("voluntary_ctxt_switches"), number("nonvoluntary_ctxt_switches")};
}

ContextSwitches contextSwitchesOfOtherThreads()
{
    ContextSwitches sum;
    const auto names = QDir(QStringLiteral("/proc/self/task")).entryList({"[0-9]*"}, QDir::Dirs);
    for (const auto &name : names) {
        if (name.toInt() == ::gettid())
            continue;
        const auto [toWait, toMakeWay] = contextSwitchesOf(name.toInt());
        sum.toWait += toWait;
        sum.toMakeWay += toMakeWay;
    }
    return sum;
}

} // namespace support
