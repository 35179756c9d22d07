// What becomes of the arguments of dialogs.

#include "PluginFixture.h"

#include <Tr.h>

#include <QDate>
#include <QPoint>
#include <QUrl>
#include <QUuid>

namespace {

using view::Message;

class DialogConversion : public PluginFixture
{
protected:
    QVariantMap dataOf(int code, const QVariantMap &arguments)
    {
        connector->takeSent();
        connector->handleEvent(Event(code, arguments));
        const auto sent = connector->takeSent();
        return sent.size() == 1 ? sent.constFirst().data : QVariantMap{{"messages", sent.size()}};
    }

    QVariant normalised(const QVariant &data)
    {
        return dataOf(117, {{"data", data}}).value("data");
    }
    QVariant titleOf(const QVariant &title)
    {
        return dataOf(117, {{"data", 1}, {"title", title}}).value("title");
    }
};

const QList<std::pair<QVariant, int>> integers{
    {5, 5},    {-5, -5}, {"250", 250}, {250LL, 250},         {250.0, 250},
    {true, 1}, {"x", 0}, {"", 0},      {QVariantList{1}, 0}, {QVariant(), 0},
};

TEST_F(DialogConversion, Amounts_timeouts_and_columns_are_integers_0_if_they_cannot_be)
{
    for (const auto &[argument, expected] : integers) {
        const auto qr = dataOf(184, {{"amount", argument}, {"timeout", argument}});
        const auto prices = dataOf(117, {{"data", 1}, {"columns", argument}});
        for (const QVariant &sent : {qr["amount"], qr["timeout"], prices["columns"]}) {
            EXPECT_EQ(sent.typeId(), QMetaType::Int);
            EXPECT_EQ(sent.toInt(), expected) << argument.typeName();
        }
    }
}

TEST_F(DialogConversion, Dialog_ids_are_integers_0_if_they_cannot_be)
{
    for (const auto &[argument, expected] : integers) {
        connector->dialogTypes.clear();
        dataOf(184, {{"dialogId", argument}});
        EXPECT_EQ(connector->dialogTypes, (QMap<int, Type>{{expected, Type::QrPayment}}));
        dataOf(117, {{"dialogId", argument}, {"data", 1}});
        EXPECT_EQ(connector->dialogTypes, (QMap<int, Type>{{expected, Type::PriceList}}));
        EXPECT_EQ(dataOf(103, {{"dialogId", argument}}), (QVariantMap{{"close", true}}));
        EXPECT_TRUE(connector->dialogTypes.isEmpty());
    }
}

TEST_F(DialogConversion, The_QR_code_and_the_scroll_value_are_texts_empty_if_they_cannot_be)
{
    const std::pair<QVariant, QString> rows[] = {
        {"x", "x"}, {12, "12"}, {QByteArray("b"), "b"}, {QVariant(), ""}, {QVariantMap(), ""}};
    for (const auto &[argument, expected] : rows) {
        for (const QVariant &sent : {dataOf(184, {{"qrCode", argument}})["qrCode"],
                                     dataOf(117, {{"scroll", argument}})["scroll"]}) {
            EXPECT_EQ(sent.typeId(), QMetaType::QString);
            EXPECT_EQ(sent.toString(), expected);
        }
    }
}

TEST_F(DialogConversion, Missing_arguments_take_the_same_defaults)
{
    EXPECT_EQ(dataOf(184, {}), (QVariantMap{{"qrCode", QString()}, {"amount", 0}, {"timeout", 0}}));
    EXPECT_EQ(dataOf(117, {}), (QVariantMap{{"scroll", QString()}}));
    const auto prices = dataOf(117, {{"data", 1}});
    EXPECT_EQ(prices["title"], QVariant(QString()));
    EXPECT_EQ(prices["columns"], QVariant(0));
}

TEST_F(DialogConversion, Arguments_that_are_not_asked_for_are_not_sent)
{
    EXPECT_EQ(dataOf(184, {{"other", 1}}).keys(), (QStringList{"amount", "qrCode", "timeout"}));
    EXPECT_EQ(dataOf(117, {{"data", 1}, {"scroll", "x"}, {"other", 1}}).keys(),
              (QStringList{"columns", "data", "title"}));
    EXPECT_EQ(dataOf(117, {{"columns", 1}, {"other", 1}}).keys(), QStringList{"scroll"});
    EXPECT_EQ(dataOf(103, {{"dialogId", 0}, {"other", 1}}), (QVariantMap{{"close", true}}));
}

TEST_F(DialogConversion, A_title_is_sent_in_the_interface_language)
{
    const auto title = QVariant::fromValue(tr::Tr({{"ru", "Цены"}, {"en", "Prices"}}));
    EXPECT_EQ(titleOf(title), QVariant("Цены"));
    host.config().setValue("Host:language", "en");
    EXPECT_EQ(titleOf(title), QVariant("Prices"));
    EXPECT_EQ(titleOf(title).typeId(), QMetaType::QString);
}

TEST_F(DialogConversion, A_title_that_is_not_translatable_is_sent_as_an_empty_text)
{
    for (const QVariant &title : {QVariant("Цены"), QVariant(5), QVariant(QPoint(1, 2)),
                                  QVariant::fromValue(tr::Tr()), QVariant()}) {
        EXPECT_EQ(titleOf(title).typeId(), QMetaType::QString);
        EXPECT_EQ(titleOf(title).toString(), "");
    }
}

TEST_F(DialogConversion, Data_of_texts_and_numbers_keep_their_content)
{
    const QVariantList goods{
        QVariantMap{{"name", "Чай"}, {"price", 12.5}, {"count", 3}, {"sold", false}},
        QVariantMap{{"name", ""}, {"none", QVariant::fromValue(nullptr)}},
    };
    EXPECT_EQ(normalised(goods), QVariant(goods));
    EXPECT_EQ(normalised(QVariantMap{{"a", QVariantList{1, "b"}}}),
              QVariant(QVariantMap{{"a", QVariantList{1, "b"}}}));
}

/// Whether JSON alone could have led to this.
bool isOfJson(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QVariantMap: {
        const auto map = value.toMap();
        return std::all_of(map.cbegin(), map.cend(), isOfJson);
    }
    case QMetaType::QVariantList: {
        const auto list = value.toList();
        return std::all_of(list.cbegin(), list.cend(), isOfJson);
    }
    case QMetaType::QString:
    case QMetaType::Bool:
    case QMetaType::Double:
    case QMetaType::LongLong:
    case QMetaType::Nullptr:
        return true;
    default:
        return false;
    }
}

TEST_F(DialogConversion, Data_of_other_types_are_sent_as_JSON_carries_them)
{
    const QUuid uuid("{67c8770b-44f1-410a-ab9a-f9b5446f13ee}");
    const std::pair<QVariant, QVariant> rows[] = {
        {QStringList{"a", "b"}, QVariantList{"a", "b"}},
        {QDate(2024, 2, 29), "2024-02-29"},
        {QUrl("http://a.example/b c"), "http://a.example/b%20c"},
        {uuid, "67c8770b-44f1-410a-ab9a-f9b5446f13ee"},
        {QVariantHash{{"a", 1}}, QVariantMap{{"a", 1}}},
        {QVariant::fromValue(tr::Tr({{"ru", "x"}})), QVariant::fromValue(nullptr)},
        {QVariant(), QVariant::fromValue(nullptr)},
        {QPoint(1, 2), QVariant::fromValue(nullptr)},
    };
    for (const auto &[data, expected] : rows) {
        EXPECT_EQ(normalised(data), expected) << data.typeName();
        EXPECT_EQ(normalised(QVariantList{data}), QVariant(QVariantList{expected}));
        EXPECT_TRUE(isOfJson(normalised(QVariantMap{{"in", data}}))) << data.typeName();
    }
}

TEST_F(DialogConversion, A_shared_number_type_of_the_host_is_not_kept)
{
    EXPECT_TRUE(isOfJson(normalised(QVariantList{5, 5U, 5.0F, qint64(5)})));
    EXPECT_EQ(normalised(5), QVariant(5));
}

} // namespace
