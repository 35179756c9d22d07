#include <display/MessageReader.h>

#include <common/MessageTypes.h>

#include <QJsonDocument>
#include <QJsonParseError>

#include <algorithm>

namespace {

ReceivedMessage refused(ReceivedMessage message, int status, const QString &reason)
{
    message.status = status;
    message.refusal = reason;
    return message;
}

struct Extent
{
    int depth = 0;
    int values = 0;
};

/// How deep the brackets outside of strings are nested, and about how many values there are;
/// meaningful for text that is JSON.
Extent extentOf(const QByteArray &json)
{
    Extent extent;
    int depth = 0;
    bool inString = false;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (inString && c == '\\') {
            ++i;
        } else if (c == '"') {
            inString = !inString;
        } else if (!inString && (c == '{' || c == '[')) {
            extent.depth = std::max(extent.depth, ++depth);
            ++extent.values;
        } else if (!inString && (c == '}' || c == ']')) {
            --depth;
        } else if (!inString && c == ',') {
            ++extent.values;
        }
    }
    return extent;
}

} // namespace

ReceivedMessage readMessage(const QString &method, const QString &path, const QByteArray &content)
{
    ReceivedMessage message;
    message.type = messageTypeOfPath(path);
    if (message.type.isEmpty())
        return refused(message, 404, QStringLiteral("no message is posted to this path"));
    if (method != u"POST")
        return refused(message, 405, QStringLiteral("a message is sent with POST"));
    const auto extent = extentOf(content);
    if (extent.depth > maxMessageDepth)
        return refused(message, 400,
                       QStringLiteral("nested deeper than %1 levels").arg(maxMessageDepth));
    if (extent.values > maxMessageValues)
        return refused(message, 400, QStringLiteral("more than %1 values").arg(maxMessageValues));

    QJsonParseError error{};
    const auto document = QJsonDocument::fromJson(content, &error);
    if (error.error != QJsonParseError::NoError)
        return refused(
            message, 400,
            QStringLiteral("not JSON: %1 at byte %2").arg(error.errorString()).arg(error.offset));
    if (!document.isObject())
        return refused(message, 400, QStringLiteral("not a JSON object"));
    message.body = document.object();
    return message;
}
