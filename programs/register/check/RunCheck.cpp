#include <register/check/RunCheck.h>

#include <register/check/DisplayCheck.h>

#include <common/EventLine.h>
#include <common/ExitCode.h>
#include <common/QuitOnSignal.h>
#include <common/UsageError.h>

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>

namespace {

void writeReport(const QString &fileName, const DisplayCheck &check, const QUrl &display)
{
    QFile file(fileName);
    const auto report = QJsonDocument(toJson(check.results(), display.toString())).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(report) < 0 || !file.flush())
        throw UsageError(QStringLiteral("--report %1: %2.").arg(fileName, file.errorString()));
}

} // namespace

int runCheck(const RegisterOptions &options)
{
    DisplayCheck check(options.check, options.requestPort, options.pluginFile);
    const QuitOnSignal signal;
    QObject::connect(&signal, &QuitOnSignal::quitRequested, &QCoreApplication::quit);
    QObject::connect(&check, &DisplayCheck::finished, &QCoreApplication::quit);
    QObject::connect(&check, &DisplayCheck::judged,
                     [](const CheckResult &result) { printLine(toText(result)); });

    printLine(QStringLiteral("Checking the display at %1, which is to send its requests to "
                             "http://127.0.0.1:%2")
                  .arg(options.check.toString())
                  .arg(check.requestPort()));
    check.start();
    QCoreApplication::exec();

    printLine(summaryOf(check.results()));
    if (!options.reportFile.isEmpty())
        writeReport(options.reportFile, check, options.check);
    return check.hasPassed() ? Fine : Failed;
}
