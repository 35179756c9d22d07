#include <adservice/Subscription.h>

#include "Subscriber.h"

#include <support/Json.h>
#include <support/PrintQt.h>

#include <openssl/x509.h>

#include <gtest/gtest.h>

namespace {

class SubscriptionFaults : public testing::Test
{
protected:
    std::optional<Answer> answerWith(Fault fault) const
    {
        return answerSubscription(subscriber.request(), announcement, fault);
    }

    /// The plaintext of an answer whose only fault is in there.
    QByteArray plaintextWith(Fault fault) const
    {
        const auto answer = answerWith(fault).value_or(Answer{});
        EXPECT_EQ(answer.status, 200);
        return subscriber.decrypt(answer);
    }

    const Announcement announcement{"127.0.0.1:38083", 3, "key"};
    const Subscriber subscriber{};
};

/// As a careless register would read it.
ssl::PublicKey readByOpenSsl(const QByteArray &der)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(der.constData());
    return ssl::PublicKey(ssl::EvpPkey(d2i_PUBKEY(nullptr, &bytes, static_cast<long>(der.size()))));
}

} // namespace

TEST_F(SubscriptionFaults, May_leave_the_request_without_an_answer)
{
    EXPECT_FALSE(answerWith(Fault::Refuse));
    EXPECT_FALSE(answerWith(Fault::NoAnswer));
    EXPECT_FALSE(answerSubscription("no request", announcement, Fault::Refuse));
}

TEST_F(SubscriptionFaults, Status_is_a_500_with_a_body)
{
    const auto answer = answerWith(Fault::Status);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 500);
    EXPECT_EQ(answer->body, "the service is out of order\n");
}

TEST_F(SubscriptionFaults, Of_the_body_leave_the_header_fields_alone)
{
    for (const auto fault : {Fault::Empty, Fault::ShortTag, Fault::Tampered, Fault::Endless}) {
        SCOPED_TRACE(nameOf(fault).toStdString());
        const auto answer = answerWith(fault);
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 200);
        EXPECT_TRUE(ssl::PublicKey::fromDer(Subscriber::field(*answer, "X-PK")).isValid());
        EXPECT_EQ(Subscriber::field(*answer, "X-IV").size(), 16);
    }
}

TEST_F(SubscriptionFaults, Empty_is_a_body_of_no_bytes)
{
    EXPECT_EQ(answerWith(Fault::Empty)->body, "");
}

TEST_F(SubscriptionFaults, Short_tag_is_a_body_one_byte_too_short_for_it)
{
    EXPECT_EQ(answerWith(Fault::ShortTag)->body.size(), 15);
}

TEST_F(SubscriptionFaults, Tampered_is_one_flipped_bit_of_the_ciphertext)
{
    auto answer = answerWith(Fault::Tampered);
    ASSERT_TRUE(answer);
    EXPECT_EQ(subscriber.decrypt(*answer), "");
    answer->body[0] = static_cast<char>(answer->body[0] ^ 1);
    EXPECT_EQ(support::json(subscriber.decrypt(*answer))["master"], "key");
}

TEST_F(SubscriptionFaults, Endless_is_a_body_that_goes_on)
{
    const auto answer = answerWith(Fault::Endless);
    ASSERT_TRUE(answer && answer->more);
    for (int piece = 0; piece < 1000; ++piece)
        ASSERT_FALSE(answer->more().isEmpty());
}

TEST_F(SubscriptionFaults, Iv_12_is_a_vector_of_12_bytes)
{
    const auto answer = answerWith(Fault::Iv12);
    ASSERT_TRUE(answer);
    EXPECT_EQ(Subscriber::field(*answer, "X-IV").size(), 12);
}

TEST_F(SubscriptionFaults, Iv_20_is_a_vector_of_20_bytes_of_which_the_first_16_are_used)
{
    const auto answer = answerWith(Fault::Iv20);
    ASSERT_TRUE(answer);
    EXPECT_EQ(Subscriber::field(*answer, "X-IV").size(), 20);
    EXPECT_EQ(support::json(subscriber.decrypt(*answer))["master"], "key");
}

TEST_F(SubscriptionFaults, Of_the_key_make_it_one_that_a_register_refuses)
{
    for (const auto fault : {Fault::ForeignCurve, Fault::ExplicitCurve, Fault::BadKey}) {
        SCOPED_TRACE(nameOf(fault).toStdString());
        const auto answer = answerWith(fault);
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 200);
        const auto key = Subscriber::field(*answer, "X-PK");
        EXPECT_FALSE(key.isEmpty());
        EXPECT_FALSE(ssl::PublicKey::fromDer(key).isValid());
        EXPECT_EQ(readByOpenSsl(key).isValid(), fault != Fault::BadKey);
    }
}

TEST_F(SubscriptionFaults, Explicit_curve_would_be_read_by_a_careless_register)
{
    const auto answer = answerWith(Fault::ExplicitCurve);
    ASSERT_TRUE(answer);
    const auto key = readByOpenSsl(Subscriber::field(*answer, "X-PK"));
    EXPECT_EQ(support::json(subscriber.decrypt(*answer, key))["master"], "key");
}

TEST_F(SubscriptionFaults, Not_json_is_a_text)
{
    const auto text = plaintextWith(Fault::NotJson);
    QJsonParseError error{};
    QJsonDocument::fromJson(text, &error);
    EXPECT_NE(error.error, QJsonParseError::NoError);
    EXPECT_EQ(text, "127.0.0.1:38083 is no JSON");
}

TEST_F(SubscriptionFaults, Of_the_announcement_are_JSON_nevertheless)
{
    EXPECT_EQ(plaintextWith(Fault::NotObject), R"(["127.0.0.1:38083",3,"key"])");
    EXPECT_EQ(plaintextWith(Fault::MissingFields), "{}");
    EXPECT_EQ(support::json(plaintextWith(Fault::StreamAsText)),
              (QJsonObject{{"listen", "127.0.0.1:38083"}, {"stream", "3"}, {"master", "key"}}));
}

TEST_F(SubscriptionFaults, Wrong_key_announces_another_one_than_the_streams)
{
    const auto stream = support::json(plaintextWith(Fault::WrongKey));
    EXPECT_EQ(stream["listen"], "127.0.0.1:38083");
    EXPECT_EQ(stream["stream"], 3);
    EXPECT_NE(stream["master"], "key");
    EXPECT_FALSE(stream["master"].toString().isEmpty());
}
