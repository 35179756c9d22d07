#include <common/DefaultPlugin.h>
#include <common/ExitCode.h>
#include <common/Logging.h>
#include <common/QuitOnSignal.h>
#include <common/RunProgram.h>
#include <doctor/Bundle.h>
#include <doctor/Examination.h>

#include <Config.h>
#include <Singleton.h>
#include <Tr.h>

#include <QCoreApplication>
#include <QJsonDocument>

#include <cstdio>

namespace {

using doctor::Language;

/// The language in which the host shows a text that it has in both.
Language languageOfSettings()
{
    const auto russian = QStringLiteral("ru");
    return tr::Tr({{russian, russian}, {QStringLiteral("en"), QStringLiteral("en")}}).ui() ==
                   russian
               ? Language::Russian
               : Language::English;
}

void print(const QByteArray &text)
{
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    std::fflush(stdout);
}

int runDoctor(const doctor::DoctorOptions &options)
{
    Singleton<Config>::instance().load(options.configFile);
    const auto language = options.language.value_or(languageOfSettings());

    const QuitOnSignal signal;
    bool isInterrupted = false;
    QObject::connect(&signal, &QuitOnSignal::quitRequested, [&] { isInterrupted = true; });
    const auto diagnosis = doctor::examine(options, [&] {
        QCoreApplication::processEvents();
        return !isInterrupted;
    });
    if (!diagnosis) {
        std::fprintf(stderr, "viewconnector-doctor: interrupted before all was checked.\n");
        return Failed;
    }
    print(options.json ? QJsonDocument(toJson(*diagnosis, language)).toJson()
                       : toText(*diagnosis, language).toUtf8());
    if (!options.bundleFile.isEmpty())
        doctor::writeBundle(options.bundleFile, doctor::bundleFiles(*diagnosis, language));
    return doctor::hasFailed(diagnosis->findings) ? Failed : Fine;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runProgram("viewconnector-doctor", []() -> int {
        const auto options =
            doctor::DoctorOptions::parse(QCoreApplication::arguments(), defaultPluginFile());
        if (!options)
            return Fine;
        logToStandardError(options->debug);
        return runDoctor(*options);
    });
}
