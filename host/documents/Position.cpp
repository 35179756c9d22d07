#include <Position.h>

#include <cmath>

qint64 Position::sum() const
{
    return std::llround(static_cast<double>(price) * quantity);
}

qint64 Position::discountSum() const
{
    return std::llround(static_cast<double>(sum()) * discountPercent / 100);
}

QVariantMap Position::toMap() const
{
    return {
        {QStringLiteral("code"), code},
        {QStringLiteral("barcode"), barcode},
        {QStringLiteral("name"), name},
        {QStringLiteral("unit"), unit},
        {QStringLiteral("price"), price},
        {QStringLiteral("quantity"), quantity},
        {QStringLiteral("sum"), sum()},
        {QStringLiteral("disc_perc"), discountPercent},
        {QStringLiteral("disc_sum"), discountSum()},
        {QStringLiteral("total"), total()},
    };
}
