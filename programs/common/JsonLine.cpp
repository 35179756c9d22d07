#include <common/JsonLine.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace {

/// QJsonDocument writes only arrays and objects, and sorts the keys of an object.
QByteArray toJson(const QJsonValue &value)
{
    const QByteArray inBrackets = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return inBrackets.mid(1, inBrackets.size() - 2);
}

} // namespace

QByteArray jsonLine(const QList<JsonField> &fields)
{
    QByteArray line("{");
    for (const auto &[key, value] : fields) {
        if (line.size() > 1)
            line += ',';
        line += toJson(key) + ':' + toJson(value);
    }
    return line + "}\n";
}
