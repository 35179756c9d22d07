#include <display/MessageText.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>
#include <QStringList>

#include <functional>

namespace {

constexpr qsizetype maxTextLength = 60;

/// Kopecks as roubles: 12050 is "120.50".
QString roubles(const QJsonValue &kopecks)
{
    return QString::number(kopecks.toDouble() / 100, 'f', 2);
}

QString shortened(const QString &text)
{
    return text.size() <= maxTextLength ? text : text.left(maxTextLength - 1) + u'…';
}

QString compact(const QJsonObject &body)
{
    return shortened(QString::fromUtf8(QJsonDocument(body).toJson(QJsonDocument::Compact)));
}

QString describeConfiguration(const QJsonObject &body)
{
    return QStringLiteral("%1 settings").arg(body.size());
}

QString describePosition(const QJsonObject &position)
{
    return QStringLiteral("%1 × %2 = %3")
        .arg(shortened(position[u"name"].toString()))
        .arg(position[u"quantity"].toDouble())
        .arg(roubles(position[u"total"]));
}

QString describeReceipt(const QJsonObject &body)
{
    if (body.isEmpty())
        return QStringLiteral("no receipt");
    if (!body.contains(u"positions"))
        return compact(body);

    const auto positions = body[u"positions"].toArray();
    QStringList parts{QStringLiteral("receipt %1").arg(body[u"number"].toInt()),
                      QStringLiteral("positions %1").arg(positions.size())};
    if (!positions.isEmpty())
        parts += QStringLiteral("last %1").arg(describePosition(positions.last().toObject()));
    if (body[u"discountSum"].toInteger() > 0)
        parts += QStringLiteral("discount %1").arg(roubles(body[u"discountSum"]));
    parts += QStringLiteral("total %1").arg(roubles(body[u"total"]));
    if (body[u"state"].toString() == u"paid")
        parts += QStringLiteral("paid, change %1").arg(roubles(body[u"change"]));
    return parts.join(QStringLiteral(", "));
}

QString describeQrPayment(const QJsonObject &body)
{
    return QStringLiteral("pay %1 within %2 s by %3")
        .arg(roubles(body[u"amount"]))
        .arg(body[u"timeout"].toInt())
        .arg(shortened(body[u"qrCode"].toString()));
}

QString describePriceList(const QJsonObject &body)
{
    if (body.contains(u"scroll"))
        return QStringLiteral("scroll %1").arg(body[u"scroll"].toString());
    return QStringLiteral("\"%1\", %2 rows in %3 columns")
        .arg(body[u"title"].toString())
        .arg(body[u"data"].toArray().size())
        .arg(body[u"columns"].toInt());
}

QString describeImage(const QJsonObject &body)
{
    return QStringLiteral("%1, %2 bytes of URI")
        .arg(compact(body[u"id"].toObject()))
        .arg(body[u"uri"].toString().size());
}

QString describeContent(const QJsonObject &body)
{
    return body[u"hide"].toBool() ? QStringLiteral("hide") : compact(body);
}

QString describeAd(const QJsonObject &body)
{
    return QStringLiteral("%1 for %2 s")
        .arg(shortened(body[u"url"].toString()))
        .arg(body[u"time"].toInteger());
}

} // namespace

QString describeMessage(const QString &type, const QJsonObject &body)
{
    using Description = std::function<QString(const QJsonObject &)>;
    static const QMap<QString, Description> descriptions{
        {QStringLiteral("Configure"), &describeConfiguration},
        {QStringLiteral("UpdateDocument"), &describeReceipt},
        {QStringLiteral("QrPayment"), &describeQrPayment},
        {QStringLiteral("ShowAd"), &describeAd},
        {QStringLiteral("PriceList"), &describePriceList},
        {QStringLiteral("ImageData"), &describeImage},
        {QStringLiteral("Content"), &describeContent},
        {QStringLiteral("PaymentDraft"), &compact},
    };
    if (body.value(u"close").toBool())
        return QStringLiteral("close");
    return descriptions.value(type, &compact)(body);
}
