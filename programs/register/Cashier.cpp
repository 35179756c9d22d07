#include <register/Cashier.h>

#include <register/CommandError.h>
#include <register/EventCode.h>
#include <register/Till.h>

#include <Tr.h>

#include <QJsonArray>

#include <limits>
#include <utility>

namespace {

constexpr control::Action receiptChanged{EContext::Sale, control::ReceiptChanged};
constexpr control::Action paymentChanged{EContext::Payment, control::PaymentChanged};
constexpr control::Action receiptPaid{EContext::Payment, control::ReceiptStateChanged};

constexpr qint64 maxReceiptSum = std::numeric_limits<int>::max(); // what an "amount" can hold
constexpr int qrTimeoutSeconds = 60;
constexpr int priceListColumns = 2;
constexpr int plainText = 1; // kind of second-screen content
constexpr int hidden = 0;

double percent(const CommandFields &fields)
{
    const double percent = fields.number(QStringLiteral("percent"));
    if (!(percent >= 0 && percent <= 100))
        throw CommandError(QStringLiteral("\"percent\" must be from 0 to 100"));
    return percent;
}

QVariantMap priceRow(const GoodsItem &item)
{
    return {{QStringLiteral("code"), item.code},
            {QStringLiteral("name"), item.name},
            {QStringLiteral("unit"), item.unit},
            {QStringLiteral("price"), item.price}};
}

tr::Tr priceListTitle()
{
    return tr::Tr({{QStringLiteral("ru"), QStringLiteral("Прайс-лист")},
                   {QStringLiteral("en"), QStringLiteral("Price list")}});
}

/// Positions are counted from 1, as on paper.
qsizetype positionIndex(const CommandFields &fields, const Receipt &receipt)
{
    const int position = fields.integer(QStringLiteral("position"));
    const auto count = receipt.positions().size();
    if (position < 1 || position > count)
        throw CommandError(
            QStringLiteral("there is no position %1: the receipt has %2").arg(position).arg(count));
    return position - 1;
}

} // namespace

Cashier::Cashier(Till &till, Goods goods) : m_till(till), m_goods(std::move(goods)) {}

void Cashier::open(const CommandFields &fields)
{
    const int next = m_lastReceipt < std::numeric_limits<int>::max() ? m_lastReceipt + 1 : 1;
    m_lastReceipt = fields.integer(QStringLiteral("number"), next);
    m_till.setDocument(QSharedPointer<Receipt>::create(m_lastReceipt));
}

void Cashier::sell(const CommandFields &fields)
{
    const auto receipt = openReceipt();
    const auto &item = goods(fields.value(QStringLiteral("goods")));
    const double quantity = fields.number(QStringLiteral("quantity"), 1);
    if (!(quantity > 0))
        throw CommandError(QStringLiteral("\"quantity\" must be above 0"));
    if (static_cast<double>(item.price) * quantity >
        static_cast<double>(maxReceiptSum - receipt->sum()))
        throw CommandError(QStringLiteral("\"quantity\" is too large: a receipt can be at most %1")
                               .arg(static_cast<double>(maxReceiptSum) / 100, 0, 'f', 2));

    receipt->addPosition({item.code, item.barcode, item.name, item.unit, item.price, quantity, 0});
    m_till.runAction(receiptChanged);
}

void Cashier::voidPosition(const CommandFields &fields)
{
    const auto receipt = openReceipt();
    receipt->removePosition(positionIndex(fields, *receipt));
    m_till.runAction(receiptChanged);
}

void Cashier::discount(const CommandFields &fields)
{
    const auto receipt = openReceipt();
    const double discountPercent = percent(fields);
    if (fields.contains(QStringLiteral("position"))) {
        const auto index = positionIndex(fields, *receipt);
        Position position = receipt->positions().at(index);
        position.discountPercent = discountPercent;
        receipt->setPosition(index, position);
    } else {
        receipt->setDiscountPercent(discountPercent);
    }
    m_till.runAction(receiptChanged);
}

void Cashier::pay(const CommandFields &fields)
{
    const auto receipt = openReceipt();
    const auto kind = fields.text(QStringLiteral("kind"), QStringLiteral("cash"));
    const auto amount = fields.integer(QStringLiteral("amount"), static_cast<int>(receipt->due()));
    if (amount < 0)
        throw CommandError(QStringLiteral("\"amount\" must not be below 0"));

    receipt->addPayment(kind, amount);
    m_till.runAction(paymentChanged);
    if (receipt->isPaid())
        m_till.runAction(receiptPaid);
}

void Cashier::showQr(const CommandFields &fields)
{
    const auto receipt = openReceipt();
    const auto amount = static_cast<int>(receipt->due());
    const auto text =
        QStringLiteral("https://pay.example.com/r/%1?sum=%2").arg(receipt->number()).arg(amount);
    QVariantMap arguments{
        {QStringLiteral("qrCode"), fields.text(QStringLiteral("text"), text)},
        {QStringLiteral("amount"), fields.integer(QStringLiteral("amount"), amount)},
        {QStringLiteral("timeout"), fields.integer(QStringLiteral("timeout"), qrTimeoutSeconds)}};
    arguments.insert(QStringLiteral("dialogId"), // once all fields are right
                     m_dialogs.open(QStringLiteral("qr")));
    notify(EventCode::QrPaymentDialog, arguments);
}

void Cashier::showPrices(const CommandFields &fields)
{
    QVariantList rows;
    if (fields.contains(QStringLiteral("goods"))) {
        const auto codes = fields.list(QStringLiteral("goods"));
        for (const auto &code : codes)
            rows.append(priceRow(goods(code)));
    } else {
        for (const auto &item : m_goods.all())
            rows.append(priceRow(item));
    }
    const int columns = fields.integer(QStringLiteral("columns"), priceListColumns);
    notify(EventCode::PriceListDialog,
           {{QStringLiteral("dialogId"), m_dialogs.open(QStringLiteral("prices"))},
            {QStringLiteral("title"), QVariant::fromValue(priceListTitle())},
            {QStringLiteral("data"), rows},
            {QStringLiteral("columns"), columns}});
}

void Cashier::scroll(const CommandFields &fields)
{
    const auto direction = fields.text(QStringLiteral("to"), QStringLiteral("down"));
    notify(EventCode::PriceListDialog, {{QStringLiteral("scroll"), direction}});
}

void Cashier::draft(const CommandFields &fields)
{
    const auto receipt = openReceipt();
    const auto due = static_cast<int>(receipt->due());
    notify(EventCode::PaymentDraftUpdate,
           {{QStringLiteral("number"), receipt->number()},
            {QStringLiteral("total"), receipt->total()},
            {QStringLiteral("kind"), fields.text(QStringLiteral("kind"), QStringLiteral("card"))},
            {QStringLiteral("amount"), fields.integer(QStringLiteral("amount"), due)}});
}

void Cashier::content(const CommandFields &fields)
{
    const bool hide = fields.boolean(QStringLiteral("hide"), false);
    const auto text = fields.text(QStringLiteral("text"), QString());
    notify(EventCode::SecondScreenContent, {{QStringLiteral("data"), text},
                                            {QStringLiteral("type"), hide ? hidden : plainText},
                                            {QStringLiteral("typeName"), QStringLiteral("text")}});
}

void Cashier::closeDialog(const CommandFields &fields)
{
    const auto idKey = QStringLiteral("dialogId");
    const int id = fields.contains(idKey) ? fields.integer(idKey) : m_dialogs.newest();
    if (id == 0)
        throw CommandError(QStringLiteral("no dialog is open"));
    m_dialogs.close(id);
    notify(EventCode::DialogClosed, {{idKey, id}});
}

QSharedPointer<Receipt> Cashier::openReceipt() const
{
    auto receipt = m_till.receipt();
    if (!receipt || receipt->isPaid())
        throw CommandError(QStringLiteral("no receipt is open: open one with {\"do\":\"open\"}"));
    return receipt;
}

const GoodsItem &Cashier::goods(const QJsonValue &code) const
{
    const auto *item = m_goods.find(code.toVariant().toString());
    if (item == nullptr)
        throw CommandError(QStringLiteral("\"goods\" names no article of the shop: give a code or "
                                          "a bar code as text"));
    return *item;
}

void Cashier::notify(int code, const QVariantMap &arguments) const
{
    m_till.notify(Event(code, arguments));
}
