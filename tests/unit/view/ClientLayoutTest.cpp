// What programs that were built against the client rely on: its meta-object, its virtual table and
// its members.

#include "ProbedClient.h"

#include <gtest/gtest.h>

#include <support/MemberOffset.h>
#include <support/PrintQt.h>
#include <support/VtableSlot.h>

#include <log4qt/logmanager.h>

#include <QMetaMethod>

#include <array>

namespace {

using view::Client;

QStringList ownMethods(QMetaMethod::MethodType type)
{
    QStringList signatures;
    const QMetaObject &meta = Client::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == type)
            signatures.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    return signatures;
}

TEST(ClientMetaObject, It_is_a_QObject_named_view_Client)
{
    EXPECT_STREQ(Client::staticMetaObject.className(), "view::Client");
    EXPECT_EQ(Client::staticMetaObject.superClass(), &QObject::staticMetaObject);
}

TEST(ClientMetaObject, It_has_exactly_eight_slots)
{
    const QStringList expected{
        "setServerAddress(QString)",
        "setTimeout(int)",
        "setInterval(int)",
        "setMessages(QSharedPointer<Locker<view::Messages,QMutex>>)",
        "onTimeout()",
        "onStart()",
        "stop()",
        "hasMessage()",
    };
    EXPECT_EQ(ownMethods(QMetaMethod::Slot), expected);
}

TEST(ClientMetaObject, It_has_no_signals_and_no_other_methods)
{
    EXPECT_EQ(ownMethods(QMetaMethod::Signal), QStringList());
    EXPECT_EQ(ownMethods(QMetaMethod::Method), QStringList());
    EXPECT_EQ(Client::staticMetaObject.propertyCount(), QObject::staticMetaObject.propertyCount());
}

TEST(ClientMetaObject, Its_slots_are_public_and_return_nothing)
{
    const QMetaObject &meta = Client::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        EXPECT_EQ(meta.method(i).access(), QMetaMethod::Public) << i;
        EXPECT_EQ(meta.method(i).returnType(), QMetaType::Void) << i;
    }
}

TEST(ClientVirtualTable, Its_five_virtual_slots_follow_those_of_QObject)
{
    const auto first = support::firstSlotAfterQObject();
    EXPECT_EQ(support::vtableSlot(&Client::setServerAddress), first);
    EXPECT_EQ(support::vtableSlot(&Client::setTimeout), first + 1);
    EXPECT_EQ(support::vtableSlot(&Client::setInterval), first + 2);
    EXPECT_EQ(support::vtableSlot(&Client::setMessages), first + 3);
    EXPECT_EQ(support::vtableSlot(&Client::onTimeout), first + 4);
}

TEST(ClientVirtualTable, No_other_function_is_virtual)
{
    EXPECT_EQ(support::vtableSlot(&Client::getUrl), -1);
    EXPECT_EQ(support::vtableSlot(&Client::onStart), -1);
    EXPECT_EQ(support::vtableSlot(&Client::stop), -1);
    EXPECT_EQ(support::vtableSlot(&Client::hasMessage), -1);
}

TEST(ClientMembers, They_follow_the_base_in_their_order_without_others_between)
{
    using support::memberOffset;
    const auto word = static_cast<std::ptrdiff_t>(sizeof(void *));
    const auto queueSize = static_cast<std::ptrdiff_t>(2 * sizeof(void *)); // object and count
    std::ptrdiff_t expected = sizeof(QObject);
    EXPECT_EQ(memberOffset(&ProbedClient::logger), expected);
    EXPECT_EQ(memberOffset(&ProbedClient::timer), expected += word);
    EXPECT_EQ(memberOffset(&ProbedClient::serverAddress), expected += word);
    EXPECT_EQ(memberOffset(&ProbedClient::restClient), expected += word);
    EXPECT_EQ(memberOffset(&ProbedClient::headers), expected += queueSize);
    EXPECT_EQ(memberOffset(&ProbedClient::messages), expected += word);
    EXPECT_EQ(static_cast<std::ptrdiff_t>(sizeof(Client)), expected + queueSize);
}

TEST(ClientMembers, A_new_client_has_their_initial_values)
{
    const ProbedClient client;
    EXPECT_EQ(client.parent(), nullptr);
    EXPECT_EQ(client.logger, Log4Qt::LogManager::logger("viewconnector"));
    ASSERT_NE(client.timer, nullptr);
    EXPECT_EQ(client.timer->parent(), &client);
    EXPECT_TRUE(client.timer->isSingleShot());
    EXPECT_FALSE(client.timer->isActive());
    EXPECT_EQ(client.serverAddress, QUrl("http://127.0.0.1:38080"));
    EXPECT_EQ(client.restClient, nullptr);
    const QHash<QString, QString> headers{{"Accept", "application/json"},
                                          {"Content-Type", "application/json"}};
    EXPECT_EQ(client.headers, headers);
    EXPECT_EQ(client.messages, nullptr);
}

} // namespace
