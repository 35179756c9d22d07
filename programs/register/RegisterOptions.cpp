#include <register/RegisterOptions.h>

#include <common/CommandLine.h>
#include <common/UsageError.h>

namespace {

constexpr int defaultRequestPort = 38081; // where displays look for the plug-in

/// A check has a shop and a script of its own.
void refuseBesideCheck(const CommandLine &line, const QStringList &names)
{
    for (const auto &name : names) {
        if (line.isSet(name))
            throw UsageError(
                QStringLiteral("--%1 does not go with --check: leave it out.").arg(name));
    }
}

} // namespace

std::optional<RegisterOptions> RegisterOptions::parse(const QStringList &arguments,
                                                      const QString &defaultPlugin)
{
    const auto config = QStringLiteral("config");
    const auto plugin = QStringLiteral("plugin");
    const auto images = QStringLiteral("images");
    const auto commands = QStringLiteral("commands");
    const auto report = QStringLiteral("report");
    const auto stay = QStringLiteral("stay");
    const auto page = QStringLiteral("page");
    const auto inspector = QStringLiteral("inspector");
    const auto check = QStringLiteral("check");
    const auto requestPort = QStringLiteral("request-port");

    CommandLine line(QStringLiteral("A cash register: loads the plug-in as any host would and runs "
                                    "commands, one JSON object a line."));
    line.addOption(config, QStringLiteral("Settings, in TOML."), QStringLiteral("FILE"));
    line.addOption(plugin, QStringLiteral("Plug-in to load (that of this build)."),
                   QStringLiteral("FILE"));
    line.addOption(images,
                   QStringLiteral("Folder of the goods' pictures; relative names of pictures in "
                                  "commands start from it."),
                   QStringLiteral("DIR"));
    line.addOption(commands, QStringLiteral("Commands to run, - for standard input."),
                   QStringLiteral("FILE|-"));
    line.addOption(report,
                   QStringLiteral("Write what was asked for, or what --check found, to FILE at the "
                                  "end."),
                   QStringLiteral("FILE"));
    line.addFlag(stay, QStringLiteral("Go on after the last command."));
    line.addOption(
        page,
        QStringLiteral("Serve the cashier's page on this port of the loopback address, 0 "
                       "for a free one; without commands, go on until told to quit."),
        QStringLiteral("PORT"));
    line.addOption(
        inspector,
        QStringLiteral("Address of a display whose inspector is told what the plug-in is "
                       "asked for."),
        QStringLiteral("URL"));
    line.addOption(check,
                   QStringLiteral("Play every message against the display at this address, tell "
                                  "what passed and what to do, and exit; needs no --config."),
                   QStringLiteral("URL"));
    line.addOption(requestPort,
                   QStringLiteral("Where that display sends its requests, 0 for a free one "
                                  "(38081)."),
                   QStringLiteral("PORT"));
    if (!line.parse(arguments))
        return std::nullopt;
    if (line.isSet(check))
        refuseBesideCheck(line, {config, images, commands, stay, page, inspector});
    else if (line.isSet(requestPort))
        throw UsageError(QStringLiteral("--request-port is for --check only."));
    else if (!line.isSet(config))
        throw UsageError(QStringLiteral("--config is missing: give the settings file, for example "
                                        "--config demo/shop.toml."));

    RegisterOptions options;
    options.configFile = line.value(config);
    options.pluginFile = line.isSet(plugin) ? line.value(plugin) : defaultPlugin;
    options.imagesFolder = line.value(images);
    options.commandsFile = line.value(commands);
    options.reportFile = line.value(report);
    options.stay = line.isSet(stay);
    options.debug = line.debug();
    if (line.isSet(page))
        options.pagePort = line.port(page, 0);
    if (line.isSet(inspector))
        options.inspector = line.address(inspector, QStringLiteral("http://127.0.0.1:38080"));
    if (line.isSet(check))
        options.check = line.address(check, QStringLiteral("http://127.0.0.1:38080"));
    options.requestPort = line.port(requestPort, defaultRequestPort);
    return options;
}
