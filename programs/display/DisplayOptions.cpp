#include <display/DisplayOptions.h>

#include <common/CommandLine.h>
#include <common/UsageError.h>

#include <QDir>

namespace {

/// Where the XDG Base Directory Specification wants it; none for a port that differs each time.
QString defaultStateFile(int port)
{
    if (port == 0)
        return {};
    const auto folder = qEnvironmentVariable("XDG_STATE_HOME");
    return QStringLiteral("%1/viewconnector/display-%2.jsonl")
        .arg(folder.isEmpty() ? QDir::homePath() + QStringLiteral("/.local/state") : folder)
        .arg(port);
}

} // namespace

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
    line.addOption(QStringLiteral("page"),
                   QStringLiteral("Listen on another port, too, for those who look at the pages."),
                   QStringLiteral("PORT"));
    line.addOption(QStringLiteral("state"),
                   QStringLiteral("Keep the last state in FILE and show it again after a restart; "
                                  "\"\" for none (a file of the user's for each port)."),
                   QStringLiteral("FILE"));
    line.addFlag(QStringLiteral("check"),
                 QStringLiteral("Judge each message by the contract; the exit code is 1 unless "
                                "something came and all of it was right."));
    line.addOption(QStringLiteral("report"),
                   QStringLiteral("Write what --check found to FILE at the end, as JSON."),
                   QStringLiteral("FILE"));
    line.addFlag(QStringLiteral("down"),
                 QStringLiteral("Close the connection of each message without an answer."));
    line.addFlag(QStringLiteral("error"), QStringLiteral("Answer each message with 500."));
    line.addOption(QStringLiteral("slow"),
                   QStringLiteral("Answer each message so many milliseconds late (0)."),
                   QStringLiteral("MS"));
    if (!line.parse(arguments))
        return std::nullopt;

    options.port = line.port(QStringLiteral("port"), options.port);
    options.recordFile = line.value(QStringLiteral("record"));
    options.stateFile = line.isSet(QStringLiteral("state")) ? line.value(QStringLiteral("state"))
                                                            : defaultStateFile(options.port);
    if (line.isSet(QStringLiteral("page")))
        options.pagePort = line.port(QStringLiteral("page"), 0);
    options.switches.down = line.isSet(QStringLiteral("down"));
    options.switches.error = line.isSet(QStringLiteral("error"));
    options.switches.slowMs = line.number(QStringLiteral("slow"), 0, 0, maxSlowMs);
    options.debug = line.debug();
    options.check = line.isSet(QStringLiteral("check"));
    options.reportFile = line.value(QStringLiteral("report"));
    if (!options.reportFile.isEmpty() && !options.check)
        throw UsageError(QStringLiteral("--report needs --check: give both."));
    if (const auto name = QStringLiteral("plugin-url"); line.isSet(name))
        options.pluginUrl = line.address(name, options.pluginUrl.toString());
    return options;
}
