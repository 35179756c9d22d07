#include <common/DefaultPlugin.h>
#include <common/ExitCode.h>
#include <common/Logging.h>
#include <common/QuitOnSignal.h>
#include <common/RunProgram.h>
#include <register/Cashier.h>
#include <register/CashierCommands.h>
#include <register/CashierPage.h>
#include <register/CommandLoop.h>
#include <register/CommandRunner.h>
#include <register/GoodsPictures.h>
#include <register/HostCommands.h>
#include <register/InspectorLink.h>
#include <register/RegisterOptions.h>
#include <register/Report.h>
#include <register/Till.h>
#include <register/check/RunCheck.h>

#include <Config.h>
#include <ImageDao.h>
#include <PluginLoader.h>
#include <Singleton.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

#include <cstdio>
#include <optional>

namespace {

/// The catalogue that "Shop:goods" names, relative to the settings file; empty without that
/// setting.
Goods readGoods(const QString &configFile)
{
    const auto name = Singleton<Config>::instance().stringValue(QStringLiteral("Shop:goods"));
    return name.isEmpty()
               ? Goods()
               : Goods::fromFile(QFileInfo(configFile).absoluteDir().absoluteFilePath(name));
}

int refusePort(int port, const QString &error)
{
    std::fprintf(stderr,
                 "register: port %d cannot be opened: %s. Stop the program that uses it or choose "
                 "another with --page.\n",
                 port, qPrintable(error));
    return Failed;
}

int runRegister(const RegisterOptions &options)
{
    Singleton<Config>::instance().load(options.configFile);
    // A picture may still be read when the last command is done; that needs QCoreApplication.
    const auto endOfImages = qScopeGuard([] { Singleton<ImageDao>::replace(nullptr); });
    Till till(options.pluginFile);
    const auto goods = readGoods(options.configFile);
    if (!options.imagesFolder.isEmpty())
        addGoodsPictures(goods, options.imagesFolder);
    Cashier cashier(till, goods);
    Commands commands;
    addHostCommands(commands, till, options.imagesFolder);
    addCashierCommands(commands, cashier);

    CommandRunner runner(commands);
    std::optional<CommandLoop> loop;
    if (!options.commandsFile.isEmpty())
        loop.emplace(runner, options.commandsFile);
    std::optional<InspectorLink> inspector;
    if (!options.inspector.isEmpty())
        inspector.emplace(till.askedFor(), options.inspector);
    std::optional<CashierPage> page;
    if (options.pagePort) {
        page.emplace(*options.pagePort, runner, till, cashier);
        page->showGoods(goods, options.imagesFolder);
        if (!page->isListening())
            return refusePort(*options.pagePort, page->errorString());
    }
    if (!till.init())
        throw PluginError(QStringLiteral("%1: the plug-in's init() returned false: see its log "
                                         "lines, or choose another with --plugin")
                              .arg(options.pluginFile));

    const QuitOnSignal signal;
    QObject::connect(&signal, &QuitOnSignal::quitRequested, &QCoreApplication::quit);
    QObject::connect(&runner, &CommandRunner::quitRequested, &QCoreApplication::quit);
    const bool stays = options.stay || (page && !loop);
    if (loop && !stays)
        QObject::connect(&*loop, &CommandLoop::finished, &QCoreApplication::quit);
    if (page)
        Log4Qt::LogManager::logger(QStringLiteral("register"))
            ->info(QStringLiteral("Cashier's page at http://127.0.0.1:%1/").arg(page->port()));
    if (loop || stays)
        QCoreApplication::exec();

    till.deinit();
    if (!options.reportFile.isEmpty())
        writeReport(options.reportFile, till);
    return runner.hasFailed() ? Failed : Fine;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runProgram("register", []() -> int {
        const auto options =
            RegisterOptions::parse(QCoreApplication::arguments(), defaultPluginFile());
        if (!options)
            return Fine;
        logToStandardError(options->debug);
        return options->check.isEmpty() ? runRegister(*options) : runCheck(*options);
    });
}
