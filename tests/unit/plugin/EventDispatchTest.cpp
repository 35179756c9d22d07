// Which events lead to which messages, and those that are passed on as they are.

#include "EventFixture.h"

#include <plugin/HostEventCode.h>

#include <QPoint>

#include <climits>

namespace {

const int followed[] = {103, 117, 184, 261, 266};

static_assert(static_cast<int>(HostEventCode::DialogClosed) == 103);
static_assert(static_cast<int>(HostEventCode::PriceListDialog) == 117);
static_assert(static_cast<int>(HostEventCode::QrPaymentDialog) == 184);
static_assert(static_cast<int>(HostEventCode::SecondScreenContent) == 261);
static_assert(static_cast<int>(HostEventCode::PaymentDraftUpdate) == 266);

class EventDispatch : public EventFixture
{
};
INSTANTIATE_FOR_BOTH_WAYS(EventDispatch);

TEST_P(EventDispatch, Unknown_codes_queue_nothing_and_change_nothing)
{
    const QVariantMap arguments{{"dialogId", 7}, {"data", "x"}, {"type", 1}, {"scroll", "y"}};
    const QMap<int, Type> open{{7, Type::QrPayment}};
    connector->dialogTypes = open;
    QList<int> codes{INT_MIN, -1, INT_MAX};
    for (int code = 0; code < 400; ++code)
        codes.append(code);
    for (const int code : codes) {
        if (std::find(std::begin(followed), std::end(followed), code) != std::end(followed))
            continue;
        EXPECT_EQ(messagesOf(code, arguments), none()) << code;
    }
    EXPECT_EQ(connector->dialogTypes, open);
    EXPECT_TRUE(isQueueEmpty());
}

TEST_P(EventDispatch, Each_event_queues_at_most_one_message_of_its_type)
{
    const QVariantMap arguments{{"dialogId", 7}, {"data", "x"}};
    const std::pair<int, Type> rows[] = {{117, Type::PriceList}, {103, Type::PriceList},
                                         {184, Type::QrPayment}, {103, Type::QrPayment},
                                         {261, Type::Content},   {266, Type::PaymentDraft}};
    for (const auto &[code, type] : rows) {
        const auto messages = messagesOf(code, arguments);
        ASSERT_EQ(messages.size(), 1) << code;
        EXPECT_EQ(messages.constFirst().type, type) << code;
    }
}

TEST_P(EventDispatch, Messages_really_wait_in_the_queue)
{
    messagesOf(266, {{"sum", 1}});
    EXPECT_EQ(takeWaiting(), QList{Message(Type::PaymentDraft, {{"sum", 1}})});
}

TEST_P(EventDispatch, Second_screen_content_is_passed_on_with_its_type_as_a_text)
{
    EXPECT_EQ(
        messagesOf(261, {{"data", "<p>Чай</p>"}, {"type", 3}, {"typeName", "html"}}),
        QList{Message(Type::Content, {{"data", "<p>Чай</p>"}, {"type", "html"}, {"hide", false}})});
}

TEST_P(EventDispatch, Second_screen_content_keeps_the_type_of_its_data)
{
    for (const QVariant &data :
         {QVariant("text"), QVariant(5), QVariant(QPoint(1, 2)), QVariant(QByteArray("bytes")),
          QVariant(QVariantMap{{"a", QVariantList{1, "b"}}}), QVariant()}) {
        const auto messages = messagesOf(261, {{"data", data}, {"type", 3}, {"typeName", "x"}});
        ASSERT_EQ(messages.size(), 1);
        const auto sent = messages.constFirst().data;
        EXPECT_EQ(sent.keys(), (QStringList{"data", "hide", "type"}));
        EXPECT_EQ(sent["data"], data);
        EXPECT_EQ(sent["data"].metaType(), data.metaType());
        EXPECT_EQ(sent["type"].typeId(), QMetaType::QString);
        EXPECT_EQ(sent["hide"].typeId(), QMetaType::Bool);
    }
}

TEST_P(EventDispatch, Only_the_type_0_hides)
{
    const std::pair<QVariant, bool> rows[] = {{0, true},        {1, false},       {-1, false},
                                              {INT_MAX, false}, {INT_MIN, false}, {"0", true},
                                              {"2", false}};
    for (const auto &[type, hide] : rows) {
        const auto messages = messagesOf(261, {{"data", 5}, {"type", type}, {"typeName", "x"}});
        ASSERT_EQ(messages.size(), 1);
        EXPECT_EQ(messages.constFirst(),
                  Message(Type::Content, {{"data", 5}, {"type", "x"}, {"hide", hide}}))
            << type.toString().toStdString();
    }
}

TEST_P(EventDispatch, Second_screen_content_without_arguments_hides_and_holds_nothing)
{
    const auto messages = messagesOf(261);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages.constFirst(),
              Message(Type::Content, {{"data", QVariant()}, {"type", QString()}, {"hide", true}}));
}

TEST_P(EventDispatch, Of_two_contents_in_a_row_the_second_waits)
{
    messagesOf(261, {{"data", 1}, {"type", 1}, {"typeName", "a"}});
    messagesOf(261, {{"data", 2}, {"type", 0}, {"typeName", "b"}});
    EXPECT_EQ(takeWaiting(),
              QList{Message(Type::Content, {{"data", 2}, {"type", "b"}, {"hide", true}})});
}

TEST_P(EventDispatch, A_payment_draft_is_passed_on_key_for_key)
{
    const QVariantMap draft{
        {"sum", 12.5},           {"lines", QVariantList{1, QVariantMap{{"a", QVariantList{true}}}}},
        {"point", QPoint(1, 2)}, {"none", QVariant()},
        {"", "empty key"},       {"nested", QVariantMap{{"x", QVariantMap{{"y", 1LL}}}}}};
    const auto messages = messagesOf(266, draft);
    ASSERT_EQ(messages, QList{Message(Type::PaymentDraft, draft)});
    for (auto entry = draft.cbegin(); entry != draft.cend(); ++entry)
        EXPECT_EQ(messages.constFirst().data[entry.key()].metaType(), entry->metaType());
}

TEST_P(EventDispatch, A_payment_draft_without_arguments_is_an_empty_map)
{
    EXPECT_EQ(messagesOf(266), QList{Message(Type::PaymentDraft, {})});
}

TEST_P(EventDispatch, Of_two_drafts_in_a_row_the_second_waits)
{
    messagesOf(266, {{"a", 1}});
    messagesOf(266, {{"b", 2}});
    EXPECT_EQ(takeWaiting(), QList{Message(Type::PaymentDraft, {{"b", 2}})});
}

} // namespace
