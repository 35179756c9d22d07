#include <register/Goods.h>

#include <ConfigError.h>
#include <TomlFile.h>

#include <algorithm>

namespace {

QString requiredText(const QVariantMap &item, const QString &key, const QString &fileName)
{
    auto text = item.value(key).toString();
    if (text.isEmpty())
        throw ConfigError(QStringLiteral("%1: an article has no \"%2\": %3")
                              .arg(fileName, key, item.value(QStringLiteral("name")).toString()));
    return text;
}

GoodsItem toItem(const QVariantMap &item, const QString &fileName)
{
    GoodsItem goods;
    goods.code = requiredText(item, QStringLiteral("code"), fileName);
    goods.name = requiredText(item, QStringLiteral("name"), fileName);
    goods.barcode = item.value(QStringLiteral("barcode")).toString();
    goods.unit = item.value(QStringLiteral("unit"), QStringLiteral("шт")).toString();
    goods.picture = item.value(QStringLiteral("picture")).toString();

    bool isNumber = false;
    goods.price = item.value(QStringLiteral("price")).toLongLong(&isNumber);
    if (!isNumber || goods.price < 0)
        throw ConfigError(QStringLiteral("%1: the article \"%2\" has no price in whole kopecks")
                              .arg(fileName, goods.code));
    return goods;
}

} // namespace

Goods Goods::fromFile(const QString &fileName)
{
    Goods goods;
    const auto items = readTomlFile(fileName).value(QStringLiteral("goods")).toList();
    for (const auto &item : items)
        goods.m_items.append(toItem(item.toMap(), fileName));
    if (goods.m_items.isEmpty())
        throw ConfigError(
            QStringLiteral("%1: no goods in it: add tables named [[goods]]").arg(fileName));
    return goods;
}

const GoodsItem *Goods::find(const QString &codeOrBarcode) const
{
    if (codeOrBarcode.isEmpty()) // would be the bar code of all that have none
        return nullptr;
    const auto found = std::find_if(m_items.cbegin(), m_items.cend(), [&](const GoodsItem &item) {
        return item.code == codeOrBarcode || item.barcode == codeOrBarcode;
    });
    return found == m_items.cend() ? nullptr : &*found;
}
