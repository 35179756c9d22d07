#include <common/ExitCode.h>
#include <common/Logging.h>
#include <common/QuitOnSignal.h>
#include <common/UsageError.h>
#include <replay/Replay.h>
#include <replay/ReplayOptions.h>

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    try {
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
    } catch (const UsageError &error) {
        std::fprintf(stderr, "viewconnector-replay: %s\n", error.what());
        return Unusable;
    }
}
