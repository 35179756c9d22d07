#include <common/CommandLine.h>
#include <common/ExitCode.h>
#include <common/RunProgram.h>
#include <common/UsageError.h>
#include <summary/Summary.h>

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>

#include <cstdio>

namespace {

/// `source` says where the text is from: the option and its file.
QJsonObject parseObject(const QByteArray &json, const QString &source)
{
    const auto document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        throw UsageError(
            QStringLiteral("%1 is no JSON object: see --help for what to give.").arg(source));
    return document.object();
}

QByteArray readFile(const CommandLine &line, const QString &option)
{
    if (!line.isSet(option))
        throw UsageError(QStringLiteral("--%1 is missing. See --help.").arg(option));
    QFile file(line.value(option));
    if (!file.open(QIODevice::ReadOnly))
        throw UsageError(
            QStringLiteral("--%1 %2: %3.").arg(option, file.fileName(), file.errorString()));
    return file.readAll();
}

QString sourceOf(const CommandLine &line, const QString &option)
{
    return QStringLiteral("--%1 %2").arg(option, line.value(option));
}

QList<QJsonObject> readRecord(const CommandLine &line, const QString &option)
{
    QList<QJsonObject> record;
    const auto lines = readFile(line, option).split('\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (!lines[i].isEmpty())
            record.append(parseObject(
                lines[i], QStringLiteral("%1:%2").arg(sourceOf(line, option)).arg(i + 1)));
    }
    return record;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return runProgram("shop-summary", []() -> int {
        CommandLine line(QStringLiteral("Tells what became of a shop's messages. Fails unless the "
                                        "display's last receipt is the register's."));
        const auto reportOption = QStringLiteral("report");
        const auto recordOption = QStringLiteral("record");
        line.addOption(reportOption, QStringLiteral("What register --report wrote."),
                       QStringLiteral("FILE"));
        line.addOption(recordOption, QStringLiteral("What display --record wrote."),
                       QStringLiteral("FILE"));
        if (!line.parse(QCoreApplication::arguments()))
            return Fine;

        const auto report = parseObject(readFile(line, reportOption), sourceOf(line, reportOption));
        const Summary summary = summarise(report, readRecord(line, recordOption));
        std::fputs(summary.toText().toUtf8().constData(), stdout);
        return summary.receiptsEqual ? Fine : Failed;
    });
}
