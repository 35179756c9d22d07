#include <record/RecordOptions.h>

#include <common/CommandLine.h>

std::optional<RecordOptions> RecordOptions::parse(const QStringList &arguments)
{
    const auto displayUrl = QStringLiteral("display");
    const auto port = QStringLiteral("port");
    const auto pluginUrl = QStringLiteral("plugin-url");
    const auto pluginPort = QStringLiteral("plugin-port");
    const auto output = QStringLiteral("output");
    const auto unredacted = QStringLiteral("unredacted");
    const auto url = QStringLiteral("URL");
    const auto number = QStringLiteral("PORT");

    RecordOptions options;
    CommandLine line(
        QStringLiteral("Stands between the plug-in and a display, passes everything on "
                       "and writes it down as lines of JSON."));
    line.addOption(displayUrl,
                   QStringLiteral("The display (%1).").arg(options.displayUrl.toString()), url);
    line.addOption(port,
                   QStringLiteral("Port on the loopback address that the plug-in posts to, 0 for a "
                                  "free one (%1).")
                       .arg(options.port),
                   number);
    line.addOption(
        pluginUrl,
        QStringLiteral("Where the plug-in answers (%1).").arg(options.pluginUrl.toString()), url);
    line.addOption(pluginPort,
                   QStringLiteral("Port on the loopback address that the display asks the plug-in "
                                  "at, 0 for a free one (%1).")
                       .arg(options.pluginPort),
                   number);
    line.addOption(output,
                   QStringLiteral("Write to FILE, which must not exist yet; \"-\" for standard "
                                  "output (-)."),
                   QStringLiteral("FILE"));
    line.addFlag(unredacted,
                 QStringLiteral("Keep what could identify buyers, payments and credentials."));
    if (!line.parse(arguments))
        return std::nullopt;

    if (line.isSet(displayUrl))
        options.displayUrl = line.address(displayUrl, options.displayUrl.toString());
    options.port = line.port(port, options.port);
    if (line.isSet(pluginUrl))
        options.pluginUrl = line.address(pluginUrl, options.pluginUrl.toString());
    options.pluginPort = line.port(pluginPort, options.pluginPort);
    if (line.isSet(output))
        options.output = line.value(output);
    options.redacts = !line.isSet(unredacted);
    options.debug = line.debug();
    return options;
}
