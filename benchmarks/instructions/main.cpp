// Runs the plug-in's hot paths for `count`, which has callgrind write a profile of each.

#include "Paths.h"

#include <common/CommandLine.h>
#include <common/DefaultPlugin.h>
#include <common/ExitCode.h>
#include <common/RunProgram.h>

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runProgram("hot-paths", []() -> int {
        CommandLine line(QStringLiteral("Runs the hot paths of the plug-in, for callgrind."));
        const auto option = QStringLiteral("repetitions");
        line.addOption(option, QStringLiteral("How often each path runs; once unless given."),
                       QStringLiteral("NUMBER"));
        if (!line.parse(QCoreApplication::arguments()))
            return Fine;

        const int repetitions = line.number(option, 1, 1, 100'000);
        countQueue(repetitions);
        countChanges(defaultPluginFile(), repetitions);
        countDelivery(repetitions);
        countRequests(defaultPluginFile(), repetitions);
        return Fine;
    });
}
