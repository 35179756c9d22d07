#include <adservice/Subscription.h>

#include "Subscriber.h"

#include <support/Json.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

const Announcement announcement{"127.0.0.1:38083", 3, "ключ & key=1"};

Answer answerTo(const QByteArray &request)
{
    return answerSubscription(request, announcement, Fault::None).value_or(Answer{});
}

QByteArray withKey(const QByteArray &der)
{
    return R"({"pk":")" + der.toBase64() + R"("})";
}

} // namespace

TEST(Subscription, Is_answered_with_the_stream_for_the_subscriber_alone)
{
    const Subscriber subscriber;
    const auto answer = answerTo(subscriber.request());
    EXPECT_EQ(answer.status, 200);
    EXPECT_FALSE(answer.more);
    EXPECT_EQ(
        support::json(subscriber.decrypt(answer)),
        (QJsonObject{{"listen", "127.0.0.1:38083"}, {"stream", 3}, {"master", "ключ & key=1"}}));
    EXPECT_EQ(Subscriber().decrypt(answer), "");
}

TEST(Subscription, Is_answered_with_the_sizes_of_the_exchange)
{
    const Subscriber subscriber;
    const auto answer = answerTo(subscriber.request());
    EXPECT_EQ(Subscriber::field(answer, "X-PK").size(), 91);
    EXPECT_EQ(Subscriber::field(answer, "X-IV").size(), 16);
    EXPECT_EQ(answer.body.size(), subscriber.decrypt(answer).size() + 16);
}

TEST(Subscription, Is_answered_under_a_new_key_and_a_new_vector_each_time)
{
    const Subscriber subscriber;
    const auto first = answerTo(subscriber.request());
    const auto second = answerTo(subscriber.request());
    for (const auto *name : {"X-PK", "X-IV"})
        EXPECT_NE(Subscriber::field(first, name), Subscriber::field(second, name)) << name;
    EXPECT_NE(first.body, second.body);
}

TEST(Subscription, Is_refused_with_the_reason_when_it_has_no_usable_key)
{
    const auto key = ssl::generateKeyPairEC().second.der();
    const std::pair<QByteArray, QByteArray> refusals[] = {
        {"", "the body is no JSON object"},
        {"{", "the body is no JSON object"},
        {"[]", "the body is no JSON object"},
        {"\"pk\"", "the body is no JSON object"},
        {"{}", "\"pk\" is missing or no text"},
        {R"({"pk":1})", "\"pk\" is missing or no text"},
        {R"({"pk":null})", "\"pk\" is missing or no text"},
        {R"({"pk":"ключ"})", "\"pk\" is not base64"},
        {R"({"pk":"AAA*"})", "\"pk\" is not base64"},
        {R"({"pk":" )" + key.toBase64() + R"("})", "\"pk\" is not base64"},
        {R"({"pk":""})", "\"pk\" is no public key on P-256 in DER"},
        {withKey("key"), "\"pk\" is no public key on P-256 in DER"},
        {withKey(key.chopped(1)), "\"pk\" is no public key on P-256 in DER"},
        {withKey(key + '\0'), "\"pk\" is no public key on P-256 in DER"},
    };
    for (const auto &[request, reason] : refusals) {
        SCOPED_TRACE(request.toStdString());
        const auto answer = answerTo(request);
        EXPECT_EQ(answer.status, 400);
        EXPECT_EQ(answer.body, reason + '\n');
    }
}

TEST(Subscription, May_hold_more_than_the_key)
{
    auto request = Subscriber().request();
    request.replace("{", R"({"more":[1,2],)");
    EXPECT_EQ(answerTo(request).status, 200);
}

TEST(Announcement, Has_a_random_key_that_needs_no_encoding)
{
    const auto key = Announcement::randomKey();
    EXPECT_EQ(key.size(), 32);
    EXPECT_EQ(QByteArray::fromHex(key.toLatin1()).size(), 16) << key.toStdString();
    EXPECT_NE(key, Announcement::randomKey());
}
