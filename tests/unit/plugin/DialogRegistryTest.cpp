// Which dialogs the plug-in takes for open on the display: every state with every event.

#include "PluginFixture.h"

#include <optional>

namespace {

using view::Message;
using Type = Message::Type;
using State = std::optional<Type>; // of dialog 7

struct Row
{
    const char *name;
    State before;
    int code;
    QVariantMap arguments;
    bool showQrCode;
    std::optional<Message> message;
    State after;
};

const QVariantMap id{{"dialogId", 7}};
const QVariantMap shown{{"dialogId", 7}, {"data", 1}};
const QVariantMap scrolled{{"dialogId", 7}, {"scroll", "up"}};

const Message qrContent(Type::QrPayment, {{"qrCode", QString()}, {"amount", 0}, {"timeout", 0}});
const Message prices(Type::PriceList, {{"title", QString()}, {"data", 1}, {"columns", 0}});
const Message scroll(Type::PriceList, {{"scroll", "up"}});
const Message qrClose(Type::QrPayment, {{"close", true}});
const Message pricesClose(Type::PriceList, {{"close", true}});

constexpr State absent;
constexpr State qr = Type::QrPayment;
constexpr State list = Type::PriceList;

const Row rows[] = {
    {"Absent_QR_dialog_shown", absent, 184, id, true, qrContent, qr},
    {"Absent_QR_dialog_not_to_be_shown", absent, 184, id, false, {}, absent},
    {"Absent_price_list_shown", absent, 117, shown, true, prices, list},
    {"Open_QR_view_QR_dialog_shown", qr, 184, id, true, qrContent, qr},
    {"Open_price_list_QR_dialog_shown", list, 184, id, true, qrContent, qr},
    {"Open_QR_view_QR_dialog_not_to_be_shown", qr, 184, id, false, {}, qr},
    {"Open_price_list_QR_dialog_not_to_be_shown", list, 184, id, false, {}, list},
    {"Open_QR_view_price_list_shown", qr, 117, shown, true, prices, list},
    {"Open_price_list_price_list_shown", list, 117, shown, true, prices, list},
    {"Absent_price_list_scrolled", absent, 117, scrolled, true, scroll, absent},
    {"Open_QR_view_price_list_scrolled", qr, 117, scrolled, true, scroll, qr},
    {"Open_price_list_scrolled", list, 117, scrolled, true, scroll, list},
    {"Absent_dialog_closed", absent, 103, id, true, {}, absent},
    {"Open_QR_view_dialog_closed", qr, 103, id, true, qrClose, absent},
    {"Open_QR_view_closed_while_not_to_be_shown", qr, 103, id, false, qrClose, absent},
    {"Open_price_list_dialog_closed", list, 103, id, true, pricesClose, absent},
};

class DialogRegistry : public PluginFixture, public testing::WithParamInterface<Row>
{
protected:
    /// Dialog 7 in `state`, beside another one that nothing here may touch.
    static QMap<int, Type> registry(const State &state)
    {
        QMap<int, Type> registry{{8, Type::QrPayment}};
        if (state)
            registry.insert(7, *state);
        return registry;
    }
};

TEST_P(DialogRegistry, It_queues_the_message_and_reaches_the_state)
{
    const Row &row = GetParam();
    host.config().setValue("View.Logic:showQrCode", row.showQrCode);
    connector->dialogTypes = registry(row.before);
    connector->handleEvent(Event(row.code, row.arguments));
    EXPECT_EQ(connector->sent, row.message ? QList{*row.message} : QList<Message>());
    EXPECT_EQ(connector->dialogTypes, registry(row.after));
    EXPECT_TRUE(log.lines().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(From, DialogRegistry, testing::ValuesIn(rows),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
