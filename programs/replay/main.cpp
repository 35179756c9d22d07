#include <common/ExitCode.h>
#include <common/Logging.h>
#include <common/QuitOnSignal.h>
#include <common/RunProgram.h>
#include <common/UsageError.h>
#include <replay/Replay.h>
#include <replay/ReplayOptions.h>

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runProgram("viewconnector-replay", [&application]() -> int {
        const auto options = ReplayOptions::parse(QCoreApplication::arguments());
        if (!options)
            return Fine;
        logToStandardError(options->debug);

        Replay replay(*options);
        const QuitOnSignal signal;
        QObject::connect(&signal, &QuitOnSignal::quitRequested, &QCoreApplication::quit);
        QObject::connect(&replay, &Replay::finished, &application, &QCoreApplication::quit,
                         Qt::QueuedConnection);
        replay.start();
        QCoreApplication::exec();
        replay.printSummary();
        if (!replay.error().isEmpty())
            throw UsageError(replay.error());
        return replay.hasSucceeded() ? Fine : Failed;
    });
}
