// The subscription to an ad service: what is asked, and what a good answer does.

#include "AdsStreamFixture.h"

#include <KeyAgreement.h>

#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QUrlQuery>

namespace {

using AdsStream = AdsStreamFixture;

QStringList streamLines(const QString &address)
{
    return {"Добавляем поток " + address, "Отправляем рекламу"};
}

QVariantMap streamEntry(const QString &address)
{
    return {{"index", 0}, {"time", 2147483647}, {"url", QUrl(address)}};
}

QByteArray publicKeyOf(const support::ScriptedRequest &request)
{
    const auto body = QJsonDocument::fromJson(request.body).object();
    return QByteArray::fromBase64(body.value("pk").toString().toLatin1());
}

TEST_F(AdsStream, The_request_posts_a_public_key_to_the_address_as_it_stands)
{
    connector->asyncGetAdsStream(QUrl(service.url().toString() + "a/b?c=d"));
    ASSERT_TRUE(support::waitFor([&] { return service.requestCount() == 1; }));
    const auto request = service.requests().constFirst();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path, service.url().path().toLatin1() + "a/b?c=d");
    EXPECT_EQ(request.field("content-type"), "application/json");
    EXPECT_EQ(request.field("content-length"), QByteArray::number(request.body.size()));

    const QByteArray key = publicKeyOf(request);
    EXPECT_TRUE(ssl::PublicKey::fromDer(key).isValid());
    EXPECT_EQ(request.body, "{\"pk\":\"" + key.toBase64() + "\"}");
}

TEST_F(AdsStream, Every_subscription_has_a_key_pair_of_its_own)
{
    connector->asyncGetAdsStream(service.url());
    connector->asyncGetAdsStream(service.url());
    ASSERT_TRUE(support::waitFor([&] { return service.requestCount() == 2; }));
    EXPECT_NE(publicKeyOf(service.requests()[0]), publicKeyOf(service.requests()[1]));
}

TEST_F(AdsStream, The_stream_becomes_the_only_entry_and_is_sent_at_once)
{
    EXPECT_EQ(subscribe(2), streamLines("ads://host?stream=3&key=K"));
    EXPECT_EQ(connector->adTimetable, QList<QVariant>{streamEntry("ads://host?stream=3&key=K")});
    EXPECT_EQ(connector->currentAd, 0);
    EXPECT_EQ(connector->takeSent(),
              QList{view::Message(Type::ShowAd, streamEntry("ads://host?stream=3&key=K"))});

    const auto entry = connector->adTimetable.constFirst().toMap();
    EXPECT_EQ(entry["index"].typeId(), QMetaType::Int);
    EXPECT_EQ(entry["time"].typeId(), QMetaType::Int);
    EXPECT_EQ(entry["url"].typeId(), QMetaType::QUrl);
}

TEST_F(AdsStream, Adding_a_stream_is_logged_at_level_info)
{
    subscribe(2);
    ASSERT_EQ(log.lines().size(), 2);
    EXPECT_EQ(log.lines().constFirst().text, "Добавляем поток ads://host?stream=3&key=K");
    EXPECT_EQ(log.lines().constFirst().level, QtInfoMsg);
}

TEST_F(AdsStream, A_timetable_that_is_being_played_is_replaced_whole)
{
    connector->adTimetable = {QVariantMap{{"id", "a"}}, QVariantMap{{"id", "b"}},
                              QVariantMap{{"id", "c"}}};
    connector->currentAd = 2;
    subscribe(2);
    EXPECT_EQ(connector->adTimetable, QList<QVariant>{streamEntry("ads://host?stream=3&key=K")});
    EXPECT_EQ(connector->currentAd, 0);
}

TEST_F(AdsStream, A_second_stream_replaces_the_first)
{
    subscribe(2);
    answer({.plaintext = R"({"listen":"other","stream":4,"master":"N"})"});
    subscribe(2);
    EXPECT_EQ(connector->adTimetable, QList<QVariant>{streamEntry("ads://other?stream=4&key=N")});
}

struct AddressRow
{
    const char *name;
    const char *plaintext;
    const char *address;
};

const AddressRow addressTable[] = {
    {"all three", R"({"listen":"host:1","stream":3,"master":"K"})", "ads://host:1?stream=3&key=K"},
    {"capital letters, which the name of a host does not keep",
     R"({"listen":"Host/Path","stream":3,"master":"K"})", "ads://host/Path?stream=3&key=K"},
    {"an empty key", R"({"listen":"host","stream":3,"master":""})", "ads://host?stream=3&key="},
    {"a path", R"({"listen":"host/path","stream":3,"master":"K"})",
     "ads://host/path?stream=3&key=K"},
    {"the number as a text", R"({"listen":"host","stream":"3","master":"K"})",
     "ads://host?stream=0&key=K"},
    {"a fraction", R"({"listen":"host","stream":3.5,"master":"K"})", "ads://host?stream=0&key=K"},
    {"a number beyond an int", R"({"listen":"host","stream":2147483648,"master":"K"})",
     "ads://host?stream=0&key=K"},
    {"a negative number", R"({"listen":"host","stream":-1,"master":"K"})",
     "ads://host?stream=-1&key=K"},
    {"no number", R"({"listen":"host","master":"K"})", "ads://host?stream=0&key=K"},
    {"no key", R"({"listen":"host","stream":3})", "ads://host?stream=3&key"},
    {"a key that is a number", R"({"listen":"host","stream":3,"master":5})",
     "ads://host?stream=3&key"},
    {"a key with signs of its own", R"({"listen":"host","stream":3,"master":"a&b=c#d e"})",
     "ads://host?stream=3&key=a%26b%3Dc%23d e"},
};

TEST_F(AdsStream, The_address_is_built_of_the_three_fields_and_what_is_missing_is_empty_or_0)
{
    for (const auto &row : addressTable) {
        SCOPED_TRACE(row.name);
        answer({.plaintext = row.plaintext});
        EXPECT_EQ(subscribe(2), streamLines(row.address));
        ASSERT_EQ(connector->adTimetable.size(), 1);
        const auto url = connector->adTimetable.constFirst().toMap()["url"].toUrl();
        EXPECT_EQ(url.scheme(), "ads");
        const QUrlQuery query(url);
        EXPECT_EQ(query.queryItems().size(), 2);
    }
}

TEST_F(AdsStream, Without_an_address_the_timetable_is_replaced_all_the_same)
{
    for (const char *plaintext : {"{}", "[1,2]", R"({"listen":1,"stream":[],"master":{}})"}) {
        SCOPED_TRACE(plaintext);
        connector->adTimetable.clear();
        answer({.plaintext = plaintext});
        const auto lines = subscribe(2);
        ASSERT_EQ(lines.size(), 2);
        EXPECT_EQ(lines[0], "Добавляем поток ads://?stream=0&key");
        EXPECT_EQ(connector->adTimetable.size(), 1);
    }
}

TEST_F(AdsStream, Of_a_vector_of_20_bytes_the_first_16_are_used)
{
    answer({.iv = "sixteen bytes iv and more"});
    EXPECT_EQ(subscribe(2), streamLines("ads://host?stream=3&key=K"));
}

TEST_F(AdsStream, The_display_gets_the_address_as_a_text)
{
    host.config().setValue("ViewConnector.Ads:url", service.url().toString());
    connector->init();
    ASSERT_TRUE(support::waitFor([&] { return rest->paths().contains("/showAD"); }));
    const auto body = QJsonDocument::fromJson(rest->posts().constLast().body).object();
    EXPECT_EQ(body, (QJsonObject{
                        {"index", 0}, {"time", 2147483647}, {"url", "ads://host?stream=3&key=K"}}));
}

TEST_F(AdsStream, The_start_subscribes_once_and_plays_the_settings_meanwhile)
{
    host.config().setValue("ViewConnector.Ads:url", service.url().toString());
    host.config().setValue("View.ADTimetable.a:index", 1);
    connector->init();
    EXPECT_EQ(connector->sent.constLast().data["id"], "a");
    EXPECT_EQ(service.requestCount(), 0) << "the start waited for the network";

    ASSERT_TRUE(support::waitFor([&] { return connector->sent.size() == 3; }));
    EXPECT_EQ(connector->sent.constLast().data, streamEntry("ads://host?stream=3&key=K"));
    EXPECT_EQ(service.requestCount(), 1);
}

TEST_F(AdsStream, Without_an_address_of_the_service_nothing_is_asked)
{
    for (const QVariant &address : {QVariant(), QVariant("")}) {
        host.config().setValue("ViewConnector.Ads:url", address);
        RecordingConnector fresh;
        fresh.init();
        support::letPass(std::chrono::milliseconds(50));
    }
    for (const auto &line : log.lines()) // an empty address would be an error
        EXPECT_EQ(line.level, QtInfoMsg) << line.text.toStdString();
}

TEST_F(AdsStream, An_address_that_is_not_quite_one_is_read_tolerantly)
{
    host.config().setValue("ViewConnector.Ads:url", service.url().toString() + "a path");
    connector->init();
    ASSERT_TRUE(support::waitFor([&] { return service.requestCount() == 1; }));
    EXPECT_TRUE(service.requests().constFirst().path.endsWith("/a%20path"));
}

TEST_F(AdsStream, When_the_stream_fails_the_settings_take_over)
{
    host.config().setValue("View.ADTimetable.a:index", 1);
    subscribe(2);
    connector->processAdResult({{"value", false}});
    EXPECT_EQ(connector->sent.constLast().data["id"], "a");
}

/// Finds the reply and its manager when the plug-in asks for their deletion.
class DeletionWatch : public QObject
{
public:
    DeletionWatch() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() != QEvent::DeferredDelete)
            return false;
        if (auto *found = qobject_cast<QNetworkReply *>(object)) {
            reply = found;
            manager = found->manager();
            request = found->request();
            privateKey = found->property("ads_private");
        }
        return false;
    }
    QPointer<QNetworkReply> reply;
    QPointer<QNetworkAccessManager> manager;
    QNetworkRequest request;
    QVariant privateKey;
};

TEST_F(AdsStream, The_private_key_is_on_the_reply_and_goes_with_it)
{
    for (const char *status : {"200 OK", "500 Internal Server Error"}) {
        const DeletionWatch watch;
        answer({.status = status});
        subscribe(2);
        EXPECT_TRUE(support::waitFor([&] { return watch.privateKey.isValid(); }));
        EXPECT_EQ(watch.privateKey.typeId(), QMetaType::QByteArray);
        const auto key = ssl::PrivateKey::fromDer(watch.privateKey.toByteArray());
        const auto [peerPrivate, peerPublic] = ssl::generateKeyPairEC();
        const auto posted = ssl::PublicKey::fromDer(publicKeyOf(service.requests().constLast()));
        EXPECT_EQ(ssl::deriveKey(key, peerPublic), ssl::deriveKey(peerPrivate, posted));

        EXPECT_TRUE(support::waitFor([&] { return watch.reply.isNull(); }));
        EXPECT_TRUE(support::waitFor([&] { return watch.manager.isNull(); }));
    }
}

TEST_F(AdsStream, The_request_is_made_with_these_settings)
{
    const DeletionWatch watch;
    subscribe(2);
    ASSERT_TRUE(support::waitFor([&] { return watch.privateKey.isValid(); }));
    const auto &request = watch.request;
    EXPECT_EQ(request.header(QNetworkRequest::ContentTypeHeader), "application/json");
    EXPECT_TRUE(request.attribute(QNetworkRequest::AutoDeleteReplyOnFinishAttribute).toBool());
    EXPECT_EQ(request.rawHeader("Accept-Encoding"), "identity");
}

TEST_F(AdsStream, After_the_end_an_answer_that_is_still_due_is_taken)
{
    connector->asyncGetAdsStream(service.url());
    connector->deinit();
    connector->takeSent();
    ASSERT_TRUE(support::waitFor([&] { return !connector->sent.isEmpty(); }));
    EXPECT_EQ(connector->sent.constFirst().data, streamEntry("ads://host?stream=3&key=K"));
}

TEST_F(AdsStream, A_plugin_that_is_gone_before_the_answer_has_given_it_up)
{
    service.answer(support::ScriptedAnswer::slow(std::chrono::milliseconds(100)));
    connector->asyncGetAdsStream(service.url());
    ASSERT_TRUE(support::waitFor([&] { return service.requestCount() == 1; }));
    connector->asyncGetAdsStream(service.url()); // this one has not even started
    connector.reset();
    support::letPass(std::chrono::milliseconds(200));
    EXPECT_EQ(service.requestCount(), 1);
    EXPECT_TRUE(log.lines().isEmpty());
}

} // namespace
