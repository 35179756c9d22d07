#include <display/Pictures.h>

#include <display/LookSetting.h>

#include <QJsonArray>

namespace {

const auto goodsCode = QStringLiteral("GoodsCode");
const auto barcode = QStringLiteral("Barcode");
const auto dataKey = QStringLiteral("data");
const auto valueKey = QStringLiteral("value");

QJsonObject identifier(const QString &type, const QString &value)
{
    return {{QStringLiteral("type"), type}, {valueKey, value}};
}

} // namespace

QJsonObject Pictures::requestForGoods(const QString &code, const QString &barcodeText)
{
    const QJsonObject data{{goodsCode, identifier(goodsCode, code)},
                           {barcode, identifier(barcode, barcodeText)}};
    return {{QStringLiteral("type"), QStringLiteral("request")},
            {QStringLiteral("name"), QStringLiteral("getImage")},
            {dataKey, data}};
}

void Pictures::configure(const QJsonObject &settings)
{
    m_shown = lookSetting(settings, QStringLiteral("showImages"), QJsonValue::Bool).toBool();
    m_asked.clear(); // the register has started anew and remembers nothing
}

QList<QJsonObject> Pictures::requestsFor(const QJsonObject &receipt)
{
    if (const auto number = receipt[u"number"]; number != m_receiptNumber) {
        m_receiptNumber = number;
        m_asked.clear();
    }
    QList<QJsonObject> requests;
    const auto positions = m_shown ? receipt[u"positions"].toArray() : QJsonArray();
    for (const auto &item : positions) {
        const auto position = item.toObject();
        const auto code = position[u"code"].toString();
        if (code.isEmpty() || m_asked.contains(code))
            continue;
        m_asked.insert(code);
        requests.append(requestForGoods(code, position[u"barcode"].toString()));
    }
    m_requested += static_cast<int>(requests.size());
    return requests;
}

void Pictures::giveUp(const QJsonObject &request)
{
    if (m_asked.remove(request[dataKey][goodsCode][valueKey].toString()))
        --m_requested;
}

void Pictures::receive(const QJsonObject &message)
{
    ++(message[u"uri"].toString().isEmpty() ? m_missing : m_delivered);
}
