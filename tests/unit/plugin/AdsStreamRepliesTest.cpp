// The subscription to an ad service: replies that end in their own time, or that the host cannot
// read.

#include "AdsStreamFixture.h"

#include <KeyAgreement.h>

#include <QNetworkReply>
#include <QPointer>

#include <algorithm>

namespace {

const QString connectionError = "Ошибка подключения к сервису Ads: ";
const QString emptyAnswer = "Пустой ответ от сервера";

using AdsStreamReplies = AdsStreamFixture;

/// A reply that finishes when the test says so.
class SlowReply : public QNetworkReply
{
public:
    explicit SlowReply(const ProbedConnector &plugin)
    {
        open(QIODevice::ReadOnly);
        connect(this, &QNetworkReply::errorOccurred, &plugin,
                &ProbedConnector::onAdsStreamConnectErrorOccurred);
        connect(this, &QNetworkReply::finished, &plugin,
                &ProbedConnector::onAdsStreamConnectFinished);
    }
    void fail()
    {
        setError(ConnectionRefusedError, "refused");
        Q_EMIT errorOccurred(ConnectionRefusedError);
    }
    void finish()
    {
        setFinished(true);
        Q_EMIT finished();
    }
    void abort() override {}
    qint64 readData(char *, qint64) override { return -1; }
};

TEST_F(AdsStreamReplies, An_error_long_before_the_end_is_an_empty_answer_too)
{
    const QPointer reply = new SlowReply(*connector);
    reply->fail();
    support::letPass(std::chrono::milliseconds(1)); // deletes what is to be deleted
    ASSERT_FALSE(reply.isNull());
    reply->finish();
    reply->fail(); // nothing more is heard of it
    reply->finish();
    EXPECT_EQ(log.textsOf("viewconnector"),
              (QStringList{connectionError + "refused", emptyAnswer}));
    EXPECT_TRUE(support::waitFor([&] { return reply.isNull(); }));
}

TEST_F(AdsStreamReplies, A_reply_that_has_finished_is_no_longer_listened_to)
{
    const QPointer reply = new SlowReply(*connector);
    reply->finish();
    reply->fail();
    reply->finish();
    EXPECT_EQ(log.textsOf("viewconnector"), QStringList{emptyAnswer});
    EXPECT_TRUE(support::waitFor([&] { return reply.isNull(); }));
}

/// A good answer, to a question whose private key is lost: a host does not agree on a key then.
class UnansweredKeyReply : public SlowReply
{
public:
    explicit UnansweredKeyReply(const ProbedConnector &plugin) : SlowReply(plugin)
    {
        setRawHeader("X-PK", ssl::generateKeyPairEC().second.der().toBase64());
        setRawHeader("X-IV", QByteArray(16, 'i').toBase64());
    }
    qint64 readData(char *data, qint64 size) override
    {
        const auto part = m_body.left(size);
        m_body.remove(0, part.size());
        std::copy(part.begin(), part.end(), data);
        return part.isEmpty() ? -1 : part.size();
    }

private:
    QByteArray m_body{32, 'b'};
};

TEST_F(AdsStreamReplies, What_the_host_throws_while_it_decrypts_ends_the_subscription_only)
{
    const QPointer reply = new UnansweredKeyReply(*connector);
    EXPECT_NO_THROW(reply->finish());
    EXPECT_EQ(log.textsOf("viewconnector"),
              QStringList{"Ошибка декодирования ответа от сервера: illegal value"});
    EXPECT_EQ(connector->adTimetable, QList<QVariant>());
    EXPECT_TRUE(connector->sent.isEmpty());
    EXPECT_TRUE(support::waitFor([&] { return reply.isNull(); }));
}

} // namespace
