// What the host throws on the client thread, where nobody could catch it.

#include "ClientFixture.h"

#include <support/Unreadable.h>

#include <new>
#include <stdexcept>

namespace {

/// A REST client that throws as often as it is told, where it is told.
class ThrowingRestClient : public support::RecordingRestClient
{
public:
    int throwsInSetLogger = 0;
    int throwsInSetRequestTimeout = 0;
    int throwsInPost = 0;
    mutable int throwsInResult = 0;

    void setLogger(const Log4Qt::Logger *logger) override
    {
        throwIf(throwsInSetLogger);
        RecordingRestClient::setLogger(logger);
    }
    void setRequestTimeout(int seconds) override
    {
        throwIf(throwsInSetRequestTimeout);
        RecordingRestClient::setRequestTimeout(seconds);
    }
    int post(const QUrl &url, const QByteArray &body, const Headers &fields) override
    {
        throwIf(throwsInPost);
        return RecordingRestClient::post(url, body, fields);
    }
    int result() const override
    {
        throwIf(throwsInResult);
        return RecordingRestClient::result();
    }

private:
    static void throwIf(int &left)
    {
        if (left > 0) {
            --left;
            throw std::runtime_error("the REST client failed");
        }
    }
};

/// A value for which there is no memory, as often as it was told.
struct Scarce
{
    static inline int failures = 0;
};

class ClientExceptions : public ClientFixture
{
protected:
    ClientExceptions() { MockFactory<RestClient>::inject(throwing); }

    const QSharedPointer<ThrowingRestClient> throwing =
        QSharedPointer<ThrowingRestClient>::create();
};

TEST_F(ClientExceptions, A_post_that_throws_is_a_post_that_failed)
{
    start(10'000);
    throwing->throwsInPost = 1;
    insert(Type::Content, {{"n", 1}});
    client.onTimeout();
    EXPECT_EQ(queue->lock()->first(), view::Message(Type::Content, {{"n", 1}}));
    EXPECT_TRUE(client.timer->isActive()); // tried again
    client.onTimeout();
    EXPECT_TRUE(queue->lock()->isEmpty());
    EXPECT_EQ(throwing->postCount(), 1);
}

TEST_F(ClientExceptions, A_result_that_throws_is_one_of_a_post_that_failed)
{
    start(10'000);
    throwing->throwsInResult = 1;
    insert(Type::Content);
    client.onTimeout();
    EXPECT_FALSE(queue->lock()->isEmpty());
    EXPECT_TRUE(client.timer->isActive());
    client.onTimeout();
    EXPECT_TRUE(queue->lock()->isEmpty());
}

TEST_F(ClientExceptions, A_start_that_fails_at_the_REST_client_is_tried_again_before_the_next_post)
{
    throwing->throwsInSetLogger = 1;
    throwing->throwsInSetRequestTimeout = 1;
    client.onStart();
    insert(Type::Content);
    client.hasMessage();
    EXPECT_EQ(throwing->postCount(), 0);
    EXPECT_TRUE(client.timer->isActive());
    client.onTimeout();
    EXPECT_EQ(throwing->postCount(), 1);
    EXPECT_TRUE(queue->lock()->isEmpty());
}

TEST_F(ClientExceptions, A_start_that_fails_at_a_setting_is_tried_again_when_it_is_mended)
{
    for (const auto *key :
         {"ViewConnector:server", "ViewConnector:timeout", "ViewConnector:interval"}) {
        ProbedClient failing;
        failing.setMessages(queue);
        host.config().setValue(key, support::Unreadable::value());
        failing.onStart();
        insert(Type::Content);
        const auto before = throwing->postCount();
        failing.hasMessage();
        EXPECT_EQ(throwing->postCount(), before) << key;
        EXPECT_TRUE(failing.timer->isActive()) << key;
        EXPECT_GE(failing.timer->interval(), 250) << key; // no thread that never rests

        host.config().setValue(key, QVariant());
        failing.onTimeout();
        EXPECT_EQ(throwing->postCount(), before + 1) << key;
        EXPECT_TRUE(queue->lock()->isEmpty()) << key;
    }
}

TEST_F(ClientExceptions, A_message_that_lacks_memory_to_be_converted_is_tried_again)
{
    QMetaType::registerConverter<Scarce, QString>([](const Scarce &) {
        if (Scarce::failures-- > 0)
            throw std::bad_alloc();
        return QStringLiteral("text");
    });
    start(10'000);
    Scarce::failures = 1;
    insert(Type::Content, {{"data", QVariant::fromValue(Scarce())}});
    client.onTimeout();
    EXPECT_EQ(throwing->postCount(), 0);
    EXPECT_TRUE(client.timer->isActive());
    client.onTimeout();
    EXPECT_EQ(throwing->postCount(), 1);
    EXPECT_TRUE(queue->lock()->isEmpty());
}

TEST_F(ClientExceptions, A_message_that_cannot_be_converted_is_dropped_and_the_next_one_goes_out)
{
    start(10'000);
    insert(Type::Configure, {{"theme:name", support::Unreadable::value()}});
    insert(Type::Content);
    client.onTimeout();
    EXPECT_EQ(throwing->postCount(), 0);
    EXPECT_TRUE(client.timer->isActive());
    client.onTimeout();
    EXPECT_EQ(throwing->paths(), QStringList{"/content"});
    EXPECT_TRUE(queue->lock()->isEmpty());
}

TEST_F(ClientExceptions, Nothing_is_logged_about_them)
{
    start(10'000);
    const auto before = log.lines().size();
    throwing->throwsInPost = 1;
    insert(Type::Content);
    client.onTimeout();
    EXPECT_EQ(log.lines().size(), before);
}

} // namespace
