#include <common/ExitCode.h>
#include <common/Logging.h>
#include <common/QuitOnSignal.h>
#include <common/RunProgram.h>
#include <display/Display.h>
#include <display/DisplayOptions.h>

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runProgram("display", []() -> int {
        const auto options = DisplayOptions::parse(QCoreApplication::arguments());
        if (!options)
            return Fine;
        logToStandardError(options->debug);

        const Display display(*options);
        if (!display.isListening()) {
            const int port = display.failedPort();
            std::fprintf(stderr,
                         "display: port %d cannot be opened: %s. Stop the program that uses it or "
                         "choose another with %s.\n",
                         port, qPrintable(display.errorString()),
                         port == options->port ? "--port" : "--page");
            return Failed;
        }
        std::printf("Display at http://127.0.0.1:%d, waiting for the register whose plug-in is at "
                    "%s\n",
                    display.port(), qPrintable(options->pluginUrl.toString()));
        std::fflush(stdout);

        const QuitOnSignal signal;
        QObject::connect(&signal, &QuitOnSignal::quitRequested, &QCoreApplication::quit);
        const int result = QCoreApplication::exec();
        display.printSummary();
        display.writeReport();
        return display.hasPassed() ? result : Failed;
    });
}
