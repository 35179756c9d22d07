// What hosts that were built against the plug-in rely on: its bases, its virtual table, its
// meta-object and its members.

#include "ProbedConnector.h"

#include <gtest/gtest.h>

#include <support/MemberOffset.h>
#include <support/PrintQt.h>
#include <support/VtableSlot.h>

#include <QMetaMethod>

#include <type_traits>

namespace {

using support::memberOffset;
using support::vtableSlot;

const void *address(const void *part)
{
    return part;
}

TEST(PluginBases, They_lie_in_their_order_the_event_listener_at_the_front)
{
    ProbedConnector connector;
    const void *const start = address(static_cast<ViewConnector *>(&connector));
    const void *const listener = address(static_cast<BaseActivityListener *>(&connector));
    const void *const plugin = address(static_cast<BasicPlugin *>(&connector));
    const void *const watcher = address(static_cast<DocumentWatcher *>(&connector));
    const void *const firstMember = address(&connector.ignoredProps);
    EXPECT_EQ(listener, start);
    EXPECT_LT(listener, plugin);
    EXPECT_LT(plugin, watcher);
    EXPECT_LT(watcher, firstMember);
}

TEST(PluginVirtualTable, Its_operations_follow_those_of_QObject_in_their_order)
{
    auto slot = support::firstSlotAfterQObject();
    EXPECT_EQ(vtableSlot(&ViewConnector::handleEvent), slot);
    EXPECT_EQ(vtableSlot(&ViewConnector::init), ++slot);
    EXPECT_EQ(vtableSlot(&ViewConnector::deinit), ++slot);
    EXPECT_EQ(vtableSlot(&ViewConnector::setDocument), ++slot);
    EXPECT_EQ(vtableSlot(&ViewConnector::addMessage), ++slot);
    EXPECT_EQ(vtableSlot(&ProbedConnector::readAdTimetable), ++slot);
    EXPECT_EQ(vtableSlot(&ProbedConnector::processRequest), ++slot);
    EXPECT_EQ(vtableSlot(&ProbedConnector::processGetImageRequest), ++slot);
    EXPECT_EQ(vtableSlot(&ProbedConnector::processResult), ++slot);
    EXPECT_EQ(vtableSlot(&ProbedConnector::processAdResult), ++slot);
    EXPECT_EQ(vtableSlot(&ProbedConnector::sendAdvertising), ++slot);
    EXPECT_EQ(vtableSlot(&ProbedConnector::sendImage), ++slot);
}

TEST(PluginVirtualTable, Its_operations_have_these_types)
{
    // Of ViewConnector itself: each is declared there, not only inherited.
    using Json = const QJsonObject &;
    static_assert(std::is_same_v<decltype(&ViewConnector::handleEvent),
                                 void (ViewConnector::*)(const Event &)>);
    static_assert(std::is_same_v<decltype(&ViewConnector::init), bool (ViewConnector::*)()>);
    static_assert(std::is_same_v<decltype(&ViewConnector::deinit), bool (ViewConnector::*)()>);
    static_assert(
        std::is_same_v<decltype(&ViewConnector::setDocument),
                       void (ViewConnector::*)(const QSharedPointer<AbstractDocument> &)>);
    static_assert(std::is_same_v<decltype(&ViewConnector::addMessage),
                                 void (ViewConnector::*)(const view::Message &)>);
    static_assert(std::is_same_v<decltype(&ProbedConnector::readAdTimetable),
                                 QList<QVariant> (ViewConnector::*)() const>);
    static_assert(
        std::is_same_v<decltype(&ProbedConnector::processRequest), void (ViewConnector::*)(Json)>);
    static_assert(std::is_same_v<decltype(&ProbedConnector::processGetImageRequest),
                                 void (ViewConnector::*)(Json)>);
    static_assert(
        std::is_same_v<decltype(&ProbedConnector::processResult), void (ViewConnector::*)(Json)>);
    static_assert(
        std::is_same_v<decltype(&ProbedConnector::processAdResult), void (ViewConnector::*)(Json)>);
    static_assert(
        std::is_same_v<decltype(&ProbedConnector::sendAdvertising), void (ViewConnector::*)()>);
    static_assert(std::is_same_v<decltype(&ProbedConnector::sendImage),
                                 void (ViewConnector::*)(const ImageId &, const QString &)>);
    static_assert(
        std::is_same_v<decltype(&ProbedConnector::getDocumentIgnoredProps), QStringList (*)()>);
    static_assert(std::is_same_v<decltype(&ProbedConnector::getDocumentPayload),
                                 QVariantMap (ViewConnector::*)() const>);
    static_assert(std::is_same_v<decltype(&ProbedConnector::readConfigurationPayload),
                                 QVariantMap (ViewConnector::*)() const>);
    EXPECT_EQ(vtableSlot(&ProbedConnector::onDocumentModified), -1);
    EXPECT_EQ(vtableSlot(&ProbedConnector::getDocumentPayload), -1);
    EXPECT_EQ(vtableSlot(&ProbedConnector::readConfigurationPayload), -1);
    static_assert(std::is_same_v<decltype(&ProbedConnector::addAwaitingLoadImage),
                                 void (ViewConnector::*)(const ImageId &, const ImageId &)>);
    static_assert(std::is_same_v<decltype(&ProbedConnector::isAwaitingLoadImage),
                                 bool (ViewConnector::*)(const ImageId &) const>);
    static_assert(std::is_same_v<decltype(&ProbedConnector::getAwaitingLoadImage),
                                 ImageId (ViewConnector::*)(const ImageId &)>);
    static_assert(std::is_same_v<decltype(&ProbedConnector::asyncGetAdsStream),
                                 void (ViewConnector::*)(const QUrl &) const>);
    static_assert(
        std::is_same_v<decltype(&ViewConnector::requestReceived),
                       void (ViewConnector::*)(const RequestHeader &, const QByteArray &)>);
    static_assert(std::is_same_v<decltype(&ViewConnector::onImageLoaded),
                                 void (ViewConnector::*)(const Image &)>);
    EXPECT_EQ(vtableSlot(&ProbedConnector::addAwaitingLoadImage), -1);
    EXPECT_EQ(vtableSlot(&ProbedConnector::isAwaitingLoadImage), -1);
    EXPECT_EQ(vtableSlot(&ProbedConnector::getAwaitingLoadImage), -1);
    EXPECT_EQ(vtableSlot(&ProbedConnector::asyncGetAdsStream), -1);
    EXPECT_EQ(vtableSlot(&ProbedConnector::onAdsStreamConnectFinished), -1);
    EXPECT_EQ(vtableSlot(&ProbedConnector::onAdsStreamConnectErrorOccurred), -1);
    EXPECT_EQ(vtableSlot(&ViewConnector::requestReceived), -1);
    EXPECT_EQ(vtableSlot(&ViewConnector::onImageLoaded), -1);
}

struct Method
{
    QMetaMethod::MethodType type;
    QByteArray signature;
    QByteArrayList parameterNames;

    bool operator==(const Method &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Method &method)
{
    return out << method.type << ' ' << method.signature.toStdString() << ' '
               << method.parameterNames.join(',').toStdString();
}

TEST(PluginMetaObject, It_has_exactly_one_signal_and_three_slots)
{
    const QMetaObject &meta = ViewConnector::staticMetaObject;
    std::vector<Method> methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        methods.push_back({method.methodType(), method.methodSignature(), method.parameterNames()});
        EXPECT_EQ(method.access(), QMetaMethod::Public);
        EXPECT_EQ(method.returnType(), QMetaType::Void);
    }
    const std::vector<Method> expected{
        {QMetaMethod::Signal, "hasMessage()", {}},
        {QMetaMethod::Slot, "handleEvent(Event)", {""}},
        {QMetaMethod::Slot, "requestReceived(RequestHeader,QByteArray)", {"header", "content"}},
        {QMetaMethod::Slot, "onImageLoaded(Image)", {"image"}},
    };
    EXPECT_EQ(methods, expected);
}

TEST(PluginMetaObject, It_is_an_event_listener_named_ViewConnector)
{
    const QMetaObject &meta = ViewConnector::staticMetaObject;
    EXPECT_STREQ(meta.className(), "ViewConnector");
    EXPECT_EQ(meta.superClass(), &BaseActivityListener::staticMetaObject);
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
}

TEST(PluginMembers, They_lie_in_their_order)
{
    const std::vector<std::ptrdiff_t> offsets{
        memberOffset(&ProbedConnector::ignoredProps),   memberOffset(&ProbedConnector::client),
        memberOffset(&ProbedConnector::clientThread),   memberOffset(&ProbedConnector::messages),
        memberOffset(&ProbedConnector::currentAd),      memberOffset(&ProbedConnector::adTimetable),
        memberOffset(&ProbedConnector::server),         memberOffset(&ProbedConnector::dialogTypes),
        memberOffset(&ProbedConnector::awaitingImages), memberOffset(&ProbedConnector::sentImages),
        memberOffset(&ProbedConnector::logger),
    };
    EXPECT_TRUE(std::is_sorted(offsets.begin(), offsets.end()));
    EXPECT_EQ(std::adjacent_find(offsets.begin(), offsets.end()), offsets.end());
}

template <class Member>
using Plain = std::remove_cvref_t<Member>;

TEST(PluginMembers, They_have_these_types)
{
    using P = ProbedConnector;
    static_assert(std::is_same_v<Plain<decltype(P::ignoredProps)>, QStringList>);
    static_assert(std::is_same_v<decltype(P::client), QSharedPointer<view::Client>>);
    static_assert(std::is_same_v<decltype(P::clientThread), QThread *>);
    static_assert(
        std::is_same_v<decltype(P::messages), QSharedPointer<Locker<view::Messages, QMutex>>>);
    static_assert(std::is_same_v<decltype(P::adTimetable), QList<QVariant>>);
    static_assert(std::is_same_v<decltype(P::server), QSharedPointer<HttpServer>>);
    static_assert(std::is_same_v<decltype(P::dialogTypes), QMap<int, view::Message::Type>>);
    static_assert(
        std::is_same_v<decltype(P::awaitingImages), Locker<QMap<ImageId, ImageId>, QMutex>>);
    static_assert(std::is_same_v<decltype(P::sentImages), QSet<ImageId>>);
    static_assert(std::is_same_v<decltype(P::logger), Log4Qt::Logger *>);
    EXPECT_EQ(sizeof(P::currentAd), sizeof(void *)); // a position takes one word
}

} // namespace
