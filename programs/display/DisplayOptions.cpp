#include <display/DisplayOptions.h>

#include <common/CommandLine.h>
#include <common/UsageError.h>

std::optional<DisplayOptions> DisplayOptions::parse(const QStringList &arguments)
{
    DisplayOptions options;
    CommandLine line(QStringLiteral("A customer display: receives the register's messages, checks "
                                    "them and prints a line for each."));
    line.addOption(QStringLiteral("port"),
                   QStringLiteral("Port on the loopback address, 0 for a free one (38080)."),
                   QStringLiteral("PORT"));
    line.addOption(QStringLiteral("plugin-url"),
                   QStringLiteral("Where the register's plug-in answers (%1).")
                       .arg(options.pluginUrl.toString()),
                   QStringLiteral("URL"));
    line.addOption(QStringLiteral("record"),
                   QStringLiteral("Write each message as a line of JSON to FILE."),
                   QStringLiteral("FILE"));
    if (!line.parse(arguments))
        return std::nullopt;

    options.port = line.port(QStringLiteral("port"), options.port);
    options.recordFile = line.value(QStringLiteral("record"));
    options.debug = line.debug();
    if (const auto name = QStringLiteral("plugin-url"); line.isSet(name)) {
        options.pluginUrl = QUrl(line.value(name));
        if (options.pluginUrl.scheme() != u"http" || options.pluginUrl.host().isEmpty())
            throw UsageError(QStringLiteral("--plugin-url \"%1\" is no address: give one like "
                                            "http://127.0.0.1:38081.")
                                 .arg(line.value(name)));
    }
    return options;
}
