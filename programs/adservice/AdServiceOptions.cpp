#include <adservice/AdServiceOptions.h>

#include <adservice/Subscription.h>
#include <common/CommandLine.h>
#include <common/UsageError.h>

#include <QFileInfo>
#include <QUrl>

#include <array>
#include <limits>

namespace {

constexpr int oneHourMs = 3'600'000;
constexpr int oneDayS = 86'400;

void describe(CommandLine &line)
{
    struct Option
    {
        const char *name;
        const char *description;
        const char *valueName;
    };
    static constexpr std::array options{
        Option{"port", "Port on the loopback address, 0 for a free one (38083).", "PORT"},
        Option{"listen", "What subscribers are told as the stream's address (this service).",
               "HOST:PORT"},
        Option{"stream", "Number of the stream (1).", "N"},
        Option{"key", "Key of the stream (random for each run).", "KEY"},
        Option{"ads", "Folder of still advertisements, which are at /ads/NAME.", "DIR"},
        Option{"frame-ms", "Time from one picture of the stream to the next (200).", "MS"},
        Option{"stream-seconds", "How long a stream goes on, 0 for without end (0).", "S"},
        Option{"answer-after", "How long a subscriber waits for the answer (0).", "MS"},
    };
    for (const auto &[name, description, valueName] : options)
        line.addOption(QString::fromLatin1(name), QString::fromLatin1(description),
                       QString::fromLatin1(valueName));
    line.addOption(QStringLiteral("fault"),
                   QStringLiteral("Answer subscribers wrongly, by one of: %1.")
                       .arg(faultNames().join(QStringLiteral(", "))),
                   QStringLiteral("NAME"));
}

QString announcedAddress(const QString &listen)
{
    const QUrl url(QStringLiteral("http://") + listen, QUrl::StrictMode);
    if (url.host().isEmpty() || url.port() < 1 || url.authority() != listen)
        throw UsageError(
            QStringLiteral("--listen \"%1\" is no address: give one like 127.0.0.1:38083.")
                .arg(listen));
    return listen;
}

QString existingFolder(const QString &folder)
{
    if (const QFileInfo info(folder); !info.isDir() || !info.isReadable())
        throw UsageError(
            QStringLiteral("--ads \"%1\" is no folder that can be read: give one like demo/ads.")
                .arg(folder));
    return folder;
}

QString givenKey(const QString &key)
{
    if (key.isEmpty())
        throw UsageError(QStringLiteral(
            "--key is empty: give a text, or leave the option out for a random one."));
    return key;
}

Fault chosenFault(const QString &name)
{
    const auto fault = faultOfName(name);
    if (!fault)
        throw UsageError(QStringLiteral("--fault \"%1\" is unknown: give one of %2.")
                             .arg(name, faultNames().join(QStringLiteral(", "))));
    return *fault;
}

} // namespace

std::optional<AdServiceOptions> AdServiceOptions::parse(const QStringList &arguments)
{
    CommandLine line(QStringLiteral("An ad service: tells registers that subscribe to it where its "
                                    "stream of pictures is, and serves the stream."));
    describe(line);
    if (!line.parse(arguments))
        return std::nullopt;

    AdServiceOptions options;
    options.debug = line.debug();
    options.port = line.port(QStringLiteral("port"), options.port);
    options.stream =
        line.number(QStringLiteral("stream"), options.stream, 0, std::numeric_limits<int>::max());
    options.frameTime =
        std::chrono::milliseconds(line.number(QStringLiteral("frame-ms"), 200, 1, oneHourMs));
    options.streamTime =
        std::chrono::seconds(line.number(QStringLiteral("stream-seconds"), 0, 0, oneDayS));
    options.answerAfter =
        std::chrono::milliseconds(line.number(QStringLiteral("answer-after"), 0, 0, oneHourMs));
    if (const auto name = QStringLiteral("listen"); line.isSet(name))
        options.listen = announcedAddress(line.value(name));
    if (const auto name = QStringLiteral("ads"); line.isSet(name))
        options.adsFolder = existingFolder(line.value(name));
    if (const auto name = QStringLiteral("fault"); line.isSet(name))
        options.fault = chosenFault(line.value(name));
    const auto key = QStringLiteral("key");
    options.key = line.isSet(key) ? givenKey(line.value(key)) : Announcement::randomKey();
    return options;
}
