#include "BusyTill.h"

#include <plugin/HostEventCode.h>

#include <support/RawClient.h>

#include <gtest/gtest.h>

namespace {

constexpr int longReceipt = 20;
constexpr int qrDialog = 1;
constexpr int pricesDialog = 2;
constexpr control::Action receiptChanged{EContext::Sale, control::ReceiptChanged};

} // namespace

void BusyTill::Plugin::addMessage(const view::Message &message)
{
    ++asked;
    newest.insert(message.type, message.data);
    ViewConnector::addMessage(message);
}

const std::array<BusyTill::Deed, 10> BusyTill::deeds{
    &BusyTill::sell,     &BusyTill::change,        &BusyTill::openReceipt, &BusyTill::showContent,
    &BusyTill::draft,    &BusyTill::showQr,        &BusyTill::showPrices,  &BusyTill::closeDialog,
    &BusyTill::finishAd, &BusyTill::askForPicture,
};

BusyTill::BusyTill(quint32 seed) : m_random(seed)
{
    m_runner.addPlugin(&m_plugin);
    m_plugin.init();
    openReceipt();
}

BusyTill::~BusyTill()
{
    m_plugin.deinit();
    m_runner.removePlugin(&m_plugin);
}

void BusyTill::step()
{
    (this->*deeds[static_cast<std::size_t>(upTo(static_cast<int>(deeds.size()) - 1))])();
}

void BusyTill::stepOfEachKind()
{
    openReceipt();
    showContent();
    draft();
    showQr();
    showPrices();
    finishAd();
    askForPicture();
}

void BusyTill::openReceipt()
{
    m_receipt = QSharedPointer<Receipt>::create(++m_receipts);
    m_plugin.setDocument(m_receipt);
}

void BusyTill::sell()
{
    if (m_receipt->positions().size() == longReceipt)
        openReceipt();
    m_receipt->addPosition(position());
    m_runner.run(receiptChanged);
}

void BusyTill::change()
{
    if (m_receipt->positions().isEmpty())
        m_receipt->addPosition(position());
    m_receipt->setPosition(upTo(static_cast<int>(m_receipt->positions().size()) - 1), position());
    m_runner.run(receiptChanged);
}

void BusyTill::showContent()
{
    notify(static_cast<int>(HostEventCode::SecondScreenContent),
           {{QStringLiteral("contentType"), 1}, {QStringLiteral("data"), upTo(1'000'000)}});
}

void BusyTill::draft()
{
    notify(static_cast<int>(HostEventCode::PaymentDraftUpdate),
           {{QStringLiteral("amount"), upTo(1'000'000)}});
}

void BusyTill::showQr()
{
    notify(static_cast<int>(HostEventCode::QrPaymentDialog),
           {{QStringLiteral("dialogId"), qrDialog},
            {QStringLiteral("qrCode"), QStringLiteral("https://pay.example/")},
            {QStringLiteral("amount"), upTo(1'000'000)}});
}

void BusyTill::showPrices()
{
    notify(static_cast<int>(HostEventCode::PriceListDialog),
           {{QStringLiteral("dialogId"), pricesDialog},
            {QStringLiteral("data"), QVariantList{upTo(1'000'000)}},
            {QStringLiteral("columns"), 2}});
}

void BusyTill::closeDialog()
{
    notify(static_cast<int>(HostEventCode::DialogClosed),
           {{QStringLiteral("dialogId"), qrDialog + upTo(1)}});
}

void BusyTill::finishAd()
{
    send(R"({"type":"result","name":"adResult","value":true})");
}

void BusyTill::askForPicture()
{
    send(R"({"type":"request","name":"getImage","data":{"GoodsCode":)"
         R"({"type":"GoodsCode","value":")" +
         QByteArray::number(++m_pictures) + R"("}}})");
}

void BusyTill::notify(int code, const QVariantMap &arguments)
{
    m_plugin.handleEvent(Event(code, arguments));
}

void BusyTill::send(const QByteArray &request)
{
    support::RawClient client(m_plugin.server->port());
    client.send(support::RawClient::request("/", request));
    EXPECT_EQ(client.answer().status, 200);
}

int BusyTill::upTo(int most)
{
    return std::uniform_int_distribution(0, most)(m_random);
}

Position BusyTill::position()
{
    const auto code = QString::number(100 + upTo(99));
    return {code,
            QStringLiteral("4600000000") + code,
            QStringLiteral("Товар ") + code,
            QStringLiteral("шт"),
            100 + upTo(100'000),
            1.0 + upTo(5),
            0};
}
