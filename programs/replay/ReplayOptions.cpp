#include <replay/ReplayOptions.h>

#include <common/CommandLine.h>
#include <common/UsageError.h>

namespace {

constexpr double leastSpeed = 0.001;
constexpr double mostSpeed = 1'000'000;

double speedOf(const QString &text)
{
    bool isNumber = false;
    const double speed = text.toDouble(&isNumber);
    if (isNumber && (speed == 0 || (speed >= leastSpeed && speed <= mostSpeed)))
        return speed;
    throw UsageError(
        QStringLiteral("--speed \"%1\" does not fit: give 0, or a number from 0.001 to "
                       "1000000.")
            .arg(text));
}

} // namespace

std::optional<ReplayOptions> ReplayOptions::parse(const QStringList &arguments)
{
    const auto recording = QStringLiteral("recording");
    const auto display = QStringLiteral("display");
    const auto speed = QStringLiteral("speed");
    const auto json = QStringLiteral("json");

    ReplayOptions options;
    CommandLine line(QStringLiteral("Posts the messages of a recording to a display again, one "
                                    "after the other. Fails unless it accepts all of them."));
    line.addOption(recording,
                   QStringLiteral("What viewconnector-record, display --record or the inspector "
                                  "wrote."),
                   QStringLiteral("FILE"));
    line.addOption(display, QStringLiteral("The display (%1).").arg(options.displayUrl.toString()),
                   QStringLiteral("URL"));
    line.addOption(speed,
                   QStringLiteral("1 as recorded, 10 ten times as fast, 0 as fast as the display "
                                  "answers (1)."),
                   QStringLiteral("FACTOR"));
    line.addFlag(json, QStringLiteral("Tell each message, and the end, as a line of JSON."));
    if (!line.parse(arguments))
        return std::nullopt;

    if (!line.isSet(recording))
        throw UsageError(QStringLiteral("--recording is missing. See --help."));
    options.recording = line.value(recording);
    if (line.isSet(display))
        options.displayUrl = line.address(display, options.displayUrl.toString());
    if (line.isSet(speed))
        options.speed = speedOf(line.value(speed));
    options.json = line.isSet(json);
    options.debug = line.debug();
    return options;
}
