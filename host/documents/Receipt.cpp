#include <Receipt.h>

#include <algorithm>
#include <cmath>

Receipt::Receipt(int number, QObject *parent) : BasicDocument(parent), m_number(number) {}

Receipt::~Receipt() = default;

void Receipt::addPosition(const Position &position)
{
    m_positions.append(position);
    m_positionMaps.append(position.toMap());
    m_sum += position.sum();
    m_positionDiscounts += position.discountSum();
    markChanged();
}

void Receipt::setPosition(qsizetype index, const Position &position)
{
    const Position &old = m_positions.at(index);
    m_sum += position.sum() - old.sum();
    m_positionDiscounts += position.discountSum() - old.discountSum();
    m_positions[index] = position;
    m_positionMaps[index] = position.toMap();
    markChanged();
}

void Receipt::removePosition(qsizetype index)
{
    const Position old = m_positions.takeAt(index);
    m_positionMaps.removeAt(index);
    m_sum -= old.sum();
    m_positionDiscounts -= old.discountSum();
    markChanged();
}

void Receipt::setDiscountPercent(double percent)
{
    m_discountPercent = percent;
    markChanged();
}

void Receipt::addPayment(const QString &kind, qint64 amount)
{
    m_payments.append(
        QVariantMap{{QStringLiteral("kind"), kind}, {QStringLiteral("amount"), amount}});
    m_paid += amount;
    markChanged();
}

QString Receipt::state() const
{
    return isPaid() ? QStringLiteral("paid") : QStringLiteral("open");
}

qint64 Receipt::discountSum() const
{
    const auto afterPositions = static_cast<double>(m_sum - m_positionDiscounts);
    return m_positionDiscounts + std::llround(afterPositions * m_discountPercent / 100);
}

qint64 Receipt::change() const
{
    return std::max<qint64>(0, m_paid - total());
}

qint64 Receipt::due() const
{
    return std::max<qint64>(0, total() - m_paid);
}

bool Receipt::isPaid() const
{
    return !m_payments.isEmpty() && m_paid >= total();
}
