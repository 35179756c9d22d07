#include <adservice/AdService.h>
#include <adservice/AdServiceOptions.h>
#include <common/ExitCode.h>
#include <common/Logging.h>
#include <common/QuitOnSignal.h>
#include <common/RunProgram.h>

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runProgram("adservice", []() -> int {
        const auto options = AdServiceOptions::parse(QCoreApplication::arguments());
        if (!options)
            return Fine;
        logToStandardError(options->debug);

        const AdService service(*options);
        if (!service.isListening()) {
            std::fprintf(stderr,
                         "adservice: port %d cannot be opened: %s. Stop the program that uses it "
                         "or choose another with --port.\n",
                         options->port, qPrintable(service.errorString()));
            return Failed;
        }
        std::printf("Ad service at http://127.0.0.1:%d\n", service.port());
        std::fflush(stdout);

        const QuitOnSignal signal;
        QObject::connect(&signal, &QuitOnSignal::quitRequested, &QCoreApplication::quit);
        return QCoreApplication::exec();
    });
}
