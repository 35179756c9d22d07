// Starts the plug-in once, and prints what that cost as one line of JSON.

#include "Start.h"

#include <common/CommandLine.h>
#include <common/ExitCode.h>
#include <common/RunProgram.h>

#include <QCoreApplication>
#include <QJsonDocument>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runProgram("start-cost", []() -> int {
        CommandLine line(QStringLiteral("Measures one start of the plug-in with the settings of "
                                        "the sample shop: how long, and how much memory."));
        const auto option = QStringLiteral("ads");
        line.addFlag(option, QStringLiteral("With an ad service to subscribe to at the start."));
        if (!line.parse(QCoreApplication::arguments()))
            return Fine;
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        const auto cost =
            bench::measureStart(line.isSet(option) ? bench::Ads::Service : bench::Ads::None);
        std::puts(QJsonDocument(cost).toJson(QJsonDocument::Compact).constData());
        return Fine;
    });
}
