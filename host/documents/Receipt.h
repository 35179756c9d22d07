#pragma once

#include <BasicDocument.h>
#include <Position.h>

#include <QList>
#include <QVariantList>

/**
 * A sales receipt: positions, discounts, payments and their sums, in kopecks.
 *
 * Owner and thread as for AbstractDocument.
 * Errors: indexes are checked by the caller.
 *
 * A position is turned into a map once, when it is added or changed; a change to another one leaves
 * that map shared with every copy of the receipt's properties made before.
 */
class HOST_EXPORT Receipt : public BasicDocument
{
    Q_OBJECT
    Q_PROPERTY(int number READ number)
    Q_PROPERTY(QString state READ state)
    Q_PROPERTY(QVariantList positions READ positionMaps)
    Q_PROPERTY(qint64 sum READ sum)
    Q_PROPERTY(qint64 discountSum READ discountSum)
    Q_PROPERTY(qint64 total READ total)
    Q_PROPERTY(QVariantList payments READ payments)
    Q_PROPERTY(qint64 change READ change)

public:
    explicit Receipt(int number, QObject *parent = nullptr);
    ~Receipt() override;

    void addPosition(const Position &position);
    void setPosition(qsizetype index, const Position &position);
    void removePosition(qsizetype index);

    /// A discount on the whole receipt, taken after those of the positions; 0 to 100.
    void setDiscountPercent(double percent);

    /// Adds a payment by `kind` ("cash", "card", "qr"); the receipt is paid when they cover it.
    void addPayment(const QString &kind, qint64 amount);

    int number() const { return m_number; }
    QString state() const; ///< "open" or "paid"
    QList<Position> positions() const { return m_positions; }
    QVariantList positionMaps() const { return m_positionMaps; }
    qint64 sum() const { return m_sum; }
    qint64 discountSum() const;
    qint64 total() const { return m_sum - discountSum(); }
    QVariantList payments() const { return m_payments; }
    qint64 change() const; ///< what the buyer gets back, 0 unless overpaid
    qint64 due() const;    ///< what is still to pay, 0 when overpaid
    bool isPaid() const;

private:
    const int m_number;
    QList<Position> m_positions;
    QVariantList m_positionMaps; // m_positions[i].toMap() at each i
    qint64 m_sum = 0;
    qint64 m_positionDiscounts = 0;
    double m_discountPercent = 0;
    QVariantList m_payments;
    qint64 m_paid = 0;
};
