#include <summary/Summary.h>

#include <QJsonArray>
#include <QMap>

#include <algorithm>
#include <cmath>

namespace {

constexpr auto updateDocument = "UpdateDocument";
/// In place of numbers: the display itself asks for pictures and further advertisements.
const auto notAsked = QStringLiteral("-");

QList<double> toTimes(const QJsonArray &array)
{
    QList<double> times;
    for (const auto &time : array)
        times.append(time.toDouble());
    return times;
}

/// The change that a message tells of is the last one before it arrived.
void addLatency(const QList<double> &asked, double arrivalMs, QList<double> &latencies)
{
    const auto after = std::upper_bound(asked.begin(), asked.end(), arrivalMs);
    if (after != asked.begin())
        latencies.append(arrivalMs - *std::prev(after));
}

} // namespace

double Summary::latencyAt(double quantile) const
{
    if (latenciesMs.isEmpty())
        return 0;
    const auto rank = std::ceil(quantile * static_cast<double>(latenciesMs.size()));
    return latenciesMs.at(std::max<qsizetype>(1, static_cast<qsizetype>(rank)) - 1);
}

QString Summary::toText() const
{
    QString text = QStringLiteral("%1%2%3%4\n")
                       .arg(QStringLiteral("Message"), -16)
                       .arg(QStringLiteral("asked for"), 10)
                       .arg(QStringLiteral("posted"), 10)
                       .arg(QStringLiteral("superseded"), 12);
    for (const auto &type : types)
        text += QStringLiteral("%1%2%3%4\n")
                    .arg(type.type, -16)
                    .arg(type.asked > 0 ? QString::number(type.asked) : notAsked, 10)
                    .arg(type.posted, 10)
                    .arg(type.asked > 0 ? QString::number(type.superseded) : notAsked, 12);
    text += QStringLiteral("From change to arrival: median %1 ms, 99th percentile %2 ms\n")
                .arg(latencyAt(0.5), 0, 'f', 1)
                .arg(latencyAt(0.99), 0, 'f', 1);
    text +=
        receiptsEqual
            ? QStringLiteral("The display's last receipt equals the register's document.\n")
            : QStringLiteral("The display's last receipt DIFFERS from the register's document.\n");
    return text;
}

Summary summarise(const QJsonObject &report, const QList<QJsonObject> &record)
{
    const auto asked = report[u"asked"].toObject();
    QMap<QString, qsizetype> posted;
    QJsonObject lastReceipt;
    Summary summary;
    for (const auto &line : record) {
        if (line[u"status"].toInt() != 200)
            continue;
        const auto type = messageTypeOfPath(line[u"path"].toString());
        ++posted[type];
        addLatency(toTimes(asked[type].toArray()), line[u"monotonicMs"].toDouble(),
                   summary.latenciesMs);
        if (type == QLatin1String(updateDocument))
            lastReceipt = line[u"body"].toObject();
    }
    std::sort(summary.latenciesMs.begin(), summary.latenciesMs.end());

    for (const auto &messageType : messageTypes) {
        const auto type = QString::fromLatin1(messageType.name);
        const auto askedFor = asked[type].toArray().size();
        const auto arrived = posted.value(type);
        if (askedFor > 0 || arrived > 0)
            summary.types.append(
                {type, askedFor, arrived, std::max<qsizetype>(0, askedFor - arrived)});
    }
    summary.receiptsEqual = posted.contains(QLatin1String(updateDocument)) &&
                            lastReceipt == report[u"document"].toObject();
    return summary;
}
