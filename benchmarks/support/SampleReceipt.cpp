#include <support/SampleReceipt.h>

#include <QObjectHelper.h>

namespace bench {

Position position(int number)
{
    return {QString::number(100 + number),
            QString::number(4'600'000'000'000 + number),
            QStringLiteral("Хлеб «Бородинский» нарезанный, %1 г").arg(300 + number % 100),
            QStringLiteral("шт"),
            8990 + number,
            number % 3 + 1.0,
            number % 5 == 0 ? 5.0 : 0.0};
}

QSharedPointer<Receipt> receiptOf(int positions)
{
    auto receipt = QSharedPointer<Receipt>::create(1);
    for (int i = 0; i < positions; ++i)
        receipt->addPosition(position(i));
    return receipt;
}

void change(Receipt &receipt)
{
    const int revision = receipt.modelRevision();
    const auto count = receipt.positions().size();
    receipt.setPosition(revision % count, position(revision));
}

QVariantMap payloadOf(const Receipt &receipt)
{
    return QObjectHelper::qobject2qvariant(&receipt, BasicDocument::getIgnoredProperties());
}

QVariantMap pictureOf(int characters)
{
    const QString start = QStringLiteral("data:image/png;base64,");
    return {
        {QStringLiteral("id"), QVariantMap{{QStringLiteral("type"), QStringLiteral("GoodsCode")},
                                           {QStringLiteral("value"), QStringLiteral("100")}}},
        {QStringLiteral("uri"), start + QString(characters - start.size(), u'A')}};
}

} // namespace bench
