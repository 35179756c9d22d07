#pragma once

#include <HostExport.h>

#include <QString>
#include <QVariantMap>

/// One line of a receipt. A value type; money is in kopecks.
struct HOST_EXPORT Position
{
    QString code;
    QString barcode;
    QString name;
    QString unit;
    qint64 price = 0;           ///< of one unit
    double quantity = 1;        ///< in units, fractions allowed
    double discountPercent = 0; ///< 0 to 100

    qint64 sum() const;         ///< price times quantity, rounded to a kopeck
    qint64 discountSum() const; ///< what the discount takes off the sum
    qint64 total() const { return sum() - discountSum(); }

    /// The position as the display gets it; the keys are documented in docs/messages.md.
    QVariantMap toMap() const;
};
