#include <common/ExitCode.h>
#include <common/Logging.h>
#include <common/QuitOnSignal.h>
#include <common/RunProgram.h>
#include <record/RecordOptions.h>
#include <record/WireRecorder.h>

#include <QCoreApplication>

#include <cstdio>

namespace {

void tell(const QString &text)
{
    std::fprintf(stderr, "viewconnector-record: %s\n", qPrintable(text));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runProgram("viewconnector-record", []() -> int {
        const auto options = RecordOptions::parse(QCoreApplication::arguments());
        if (!options)
            return Fine;
        logToStandardError(options->debug);

        const WireRecorder recorder(*options);
        if (!recorder.isListening()) {
            const auto option = recorder.failedOption();
            tell(QStringLiteral("port %1 cannot be opened: %2. Stop the program that uses it or "
                                "choose another with --%3.")
                     .arg(option == u"port" ? options->port : options->pluginPort)
                     .arg(recorder.errorString(), option));
            return Failed;
        }
        tell(QStringLiteral("set the plug-in's ViewConnector:server to http://127.0.0.1:%1; its "
                            "messages go on to the display at %2")
                 .arg(recorder.port())
                 .arg(options->displayUrl.toString()));
        tell(QStringLiteral("set the display's address of the plug-in to http://127.0.0.1:%1; its "
                            "requests go on to the plug-in at %2")
                 .arg(recorder.pluginPort())
                 .arg(options->pluginUrl.toString()));

        const QuitOnSignal signal;
        QObject::connect(&signal, &QuitOnSignal::quitRequested, &QCoreApplication::quit);
        const int result = QCoreApplication::exec();
        tell(QStringLiteral("%1 messages to the display and %2 requests to the plug-in have passed")
                 .arg(recorder.messages())
                 .arg(recorder.requests()));
        return recorder.isComplete() ? result : Failed;
    });
}
