// Dialogs of the register and their counterparts on the display.

#include "EventFixture.h"

namespace {

constexpr auto showQrCode = "View.Logic:showQrCode";
const QVariantMap closing{{"close", true}};

class Dialogs : public EventFixture
{
};
INSTANTIATE_FOR_BOTH_WAYS(Dialogs);

TEST_P(Dialogs, A_QR_dialog_is_shown_and_its_close_closes_it)
{
    EXPECT_EQ(
        messagesOf(184, {{"dialogId", 7},
                         {"qrCode", "https://pay.example/1"},
                         {"amount", 250},
                         {"timeout", 60}}),
        QList{Message(Type::QrPayment,
                      {{"qrCode", "https://pay.example/1"}, {"amount", 250}, {"timeout", 60}})});
    EXPECT_EQ(messagesOf(103, {{"dialogId", 7}}), QList{Message(Type::QrPayment, closing)});
    EXPECT_TRUE(connector->dialogTypes.isEmpty());
}

TEST_P(Dialogs, A_second_close_does_nothing)
{
    messagesOf(184, {{"dialogId", 7}});
    messagesOf(103, {{"dialogId", 7}});
    EXPECT_EQ(messagesOf(103, {{"dialogId", 7}}), none());
}

TEST_P(Dialogs, A_close_of_another_dialog_does_nothing)
{
    messagesOf(184, {{"dialogId", 7}});
    EXPECT_EQ(messagesOf(103, {{"dialogId", 8}}), none());
    EXPECT_EQ(connector->dialogTypes, (QMap<int, Type>{{7, Type::QrPayment}}));
}

TEST_P(Dialogs, Several_dialogs_are_closed_each_by_its_own_id)
{
    messagesOf(184, {{"dialogId", 1}});
    messagesOf(117, {{"dialogId", 2}, {"data", 0}});
    messagesOf(184, {{"dialogId", -3}});
    EXPECT_EQ(messagesOf(103, {{"dialogId", 2}}), QList{Message(Type::PriceList, closing)});
    EXPECT_EQ(messagesOf(103, {{"dialogId", -3}}), QList{Message(Type::QrPayment, closing)});
    EXPECT_EQ(connector->dialogTypes, (QMap<int, Type>{{1, Type::QrPayment}}));
}

TEST_P(Dialogs, A_QR_dialog_that_is_not_to_be_shown_does_nothing_and_neither_does_its_close)
{
    host.config().setValue(showQrCode, false);
    EXPECT_EQ(messagesOf(184, {{"dialogId", 7}, {"qrCode", "x"}}), none());
    EXPECT_TRUE(connector->dialogTypes.isEmpty());
    EXPECT_EQ(messagesOf(103, {{"dialogId", 7}}), none());
    EXPECT_TRUE(isQueueEmpty());
}

TEST_P(Dialogs, The_setting_is_read_at_each_QR_dialog)
{
    for (const bool shown : {true, false, true, false}) {
        host.config().setValue(showQrCode, shown);
        EXPECT_EQ(messagesOf(184, {{"dialogId", 7}}).size(), shown ? 1 : 0);
    }
    host.config().setValue(showQrCode, QVariant());
    EXPECT_EQ(messagesOf(184, {{"dialogId", 7}}).size(), 1);
}

TEST_P(Dialogs, The_setting_may_be_stored_as_a_text_or_a_number)
{
    const std::pair<QVariant, qsizetype> rows[] = {{"false", 0}, {"true", 1}, {0, 0}, {1, 1}};
    for (const auto &[stored, messages] : rows) {
        host.config().setValue(showQrCode, stored);
        EXPECT_EQ(messagesOf(184).size(), messages) << stored.toString().toStdString();
    }
}

TEST_P(Dialogs, The_setting_is_for_QR_dialogs_only)
{
    host.config().setValue(showQrCode, false);
    EXPECT_EQ(messagesOf(117, {{"dialogId", 3}, {"data", 0}}).size(), 1);
    EXPECT_EQ(messagesOf(103, {{"dialogId", 3}}), QList{Message(Type::PriceList, closing)});
}

TEST_P(Dialogs, A_price_list_is_shown_and_its_close_closes_it)
{
    const QVariantList goods{QVariantMap{{"name", "Чай"}, {"price", 12.5}}};
    const auto shown = messagesOf(117, {{"dialogId", 3}, {"data", goods}, {"columns", 2}});
    EXPECT_EQ(shown, QList{Message(Type::PriceList,
                                   {{"title", QString()}, {"data", goods}, {"columns", 2}})});
    EXPECT_EQ(messagesOf(103, {{"dialogId", 3}}), QList{Message(Type::PriceList, closing)});
}

TEST_P(Dialogs, A_price_list_with_empty_data_is_shown_all_the_same)
{
    for (const QVariant &empty : {QVariant(), QVariant(""), QVariant(QVariantList())}) {
        const auto messages = messagesOf(117, {{"data", empty}, {"scroll", "down"}});
        ASSERT_EQ(messages.size(), 1);
        EXPECT_EQ(messages.constFirst().data.keys(), (QStringList{"columns", "data", "title"}));
        EXPECT_EQ(connector->dialogTypes, (QMap<int, Type>{{0, Type::PriceList}}));
    }
}

TEST_P(Dialogs, A_price_list_is_scrolled_even_if_none_is_shown)
{
    EXPECT_EQ(messagesOf(117, {{"scroll", "down"}, {"dialogId", 3}}),
              QList{Message(Type::PriceList, {{"scroll", "down"}})});
    EXPECT_TRUE(connector->dialogTypes.isEmpty());
}

TEST_P(Dialogs, A_price_list_without_an_id_has_the_id_0)
{
    messagesOf(117, {{"data", 1}});
    EXPECT_EQ(connector->dialogTypes, (QMap<int, Type>{{0, Type::PriceList}}));
    EXPECT_EQ(messagesOf(103), QList{Message(Type::PriceList, closing)});
}

TEST_P(Dialogs, A_later_dialog_with_the_same_id_is_the_one_that_is_closed)
{
    messagesOf(184, {{"dialogId", 7}});
    messagesOf(117, {{"dialogId", 7}, {"data", 1}});
    EXPECT_EQ(connector->dialogTypes, (QMap<int, Type>{{7, Type::PriceList}}));
    EXPECT_EQ(messagesOf(103, {{"dialogId", 7}}), QList{Message(Type::PriceList, closing)});
    EXPECT_TRUE(connector->dialogTypes.isEmpty());
}

TEST_P(Dialogs, Shown_and_closed_before_its_turn_only_the_close_waits)
{
    messagesOf(184, {{"dialogId", 7}, {"qrCode", "x"}});
    messagesOf(103, {{"dialogId", 7}});
    EXPECT_EQ(takeWaiting(), QList{Message(Type::QrPayment, closing)});
}

TEST_P(Dialogs, Shown_and_scrolled_before_its_turn_only_the_scroll_waits)
{
    messagesOf(117, {{"dialogId", 3}, {"data", 1}});
    messagesOf(117, {{"scroll", "down"}});
    EXPECT_EQ(takeWaiting(), QList{Message(Type::PriceList, {{"scroll", "down"}})});
}

TEST_P(Dialogs, The_entry_is_removed_only_after_the_close_was_queued)
{
    class Watching : public ProbedConnector
    {
    public:
        void addMessage(const Message &) override { openAtMessage = dialogTypes.size(); }
        qsizetype openAtMessage = -1;
    };
    Watching watching;
    watching.dialogTypes = {{7, Type::QrPayment}};
    watching.handleEvent(Event(103, {{"dialogId", 7}}));
    EXPECT_EQ(watching.openAtMessage, 1);
    EXPECT_TRUE(watching.dialogTypes.isEmpty());
}

} // namespace
