#include <record/ExchangeLine.h>

#include <common/JsonLine.h>
#include <common/MessageTypes.h>
#include <record/Masking.h>
#include <record/Redaction.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>

#include <cmath>
#include <optional>

namespace {

/// Microseconds are enough, and keep the line readable.
double rounded(double milliseconds)
{
    return std::round(milliseconds * 1000) / 1000;
}

std::optional<QString> textOf(const QByteArray &content)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(content);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

/// A body under `key` if it is JSON, otherwise under a key that says what it is; none if empty.
/// In a text without structure nothing says which words are personal: only its shape is kept.
QList<JsonField> bodyFields(const QString &key, const QByteArray &content, bool redacts)
{
    if (content.isEmpty())
        return {};
    if (const auto document = QJsonDocument::fromJson(content); !document.isNull()) {
        const QJsonValue value =
            document.isObject() ? QJsonValue(document.object()) : QJsonValue(document.array());
        return {{key, redacts ? Redaction::value(value) : value}};
    }
    if (const auto text = textOf(content))
        return {{key + QStringLiteral("Text"), redacts ? masked(*text) : *text}};
    if (redacts)
        return {{key + QStringLiteral("Bytes"), content.size()}};
    return {{key + QStringLiteral("Base64"), QString::fromLatin1(content.toBase64())}};
}

} // namespace

QByteArray exchangeLine(const LinePlace &place, const Exchange &exchange, bool redacts)
{
    const auto type = messageTypeOfPath(exchange.path.section(u'?', 0, 0));
    QList<JsonField> fields{
        {QStringLiteral("n"), place.number},
        {QStringLiteral("time"), exchange.startedAt.toString(Qt::ISODateWithMs)},
        {QStringLiteral("ms"), rounded(place.sinceStartMs)},
        {QStringLiteral("to"),
         place.isToDisplay ? QStringLiteral("display") : QStringLiteral("plug-in")},
        {QStringLiteral("method"), QString::fromUtf8(exchange.method)},
        {QStringLiteral("path"), redacts ? Redaction::path(exchange.path) : exchange.path},
    };
    if (place.isToDisplay && !type.isEmpty())
        fields.append({QStringLiteral("type"), type});
    fields.append(bodyFields(QStringLiteral("body"), exchange.requestBody, redacts));
    fields.append({QStringLiteral("status"), exchange.status});
    fields.append({QStringLiteral("took"), rounded(exchange.durationMs)});
    fields.append(bodyFields(QStringLiteral("answer"), exchange.answerBody, redacts));
    if (!exchange.error.isEmpty())
        fields.append(
            {QStringLiteral("error"), redacts ? Redaction::text(exchange.error) : exchange.error});
    return jsonLine(fields);
}
