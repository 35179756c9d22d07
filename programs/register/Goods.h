#pragma once

#include <QList>
#include <QString>

/// One article of the shop. A value type; the price is in kopecks for one unit.
struct GoodsItem
{
    QString code;
    QString barcode;
    QString name;
    QString unit;
    qint64 price = 0;
    QString picture;
};

/**
 * The shop's catalogue.
 *
 * Owner: main. Thread: any, it is not changed after it was read.
 */
class Goods
{
public:
    Goods() = default;

    /// Reads the [[goods]] tables of a TOML file. Throws ConfigError with file and line.
    static Goods fromFile(const QString &fileName);

    const QList<GoodsItem> &all() const { return m_items; }
    /// The article with this code or bar code; null if there is none.
    const GoodsItem *find(const QString &codeOrBarcode) const;

private:
    QList<GoodsItem> m_items;
};
