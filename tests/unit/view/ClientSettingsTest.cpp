// The settings that can be made, their limits, and the log line of each.

#include "ClientFixture.h"

namespace {

class ClientSettings : public ClientFixture
{
protected:
    ClientSettings() { client.onStart(); }

    /// The one line that `change` logs.
    template <class Change>
    QString lineOf(Change change)
    {
        const auto before = log.lines().size();
        change();
        const auto lines = log.lines().mid(before);
        if (lines.size() != 1)
            return QString("%1 lines").arg(lines.size());
        EXPECT_EQ(lines.constFirst().level, QtInfoMsg);
        EXPECT_EQ(lines.constFirst().logger, "viewconnector");
        return lines.constFirst().text;
    }
};

TEST_F(ClientSettings, An_address_is_taken_and_logged)
{
    EXPECT_EQ(lineOf([&] { client.setServerAddress("https://display.example:444/x?y=1"); }),
              "Установка адреса сервера: https://display.example:444/x?y=1");
    EXPECT_EQ(client.serverAddress, QUrl("https://display.example:444/x?y=1"));
}

TEST_F(ClientSettings, An_empty_address_keeps_the_one_before_and_logs_it)
{
    client.setServerAddress("http://display.example:81");
    for (const QString &empty : {QString(""), QString()}) {
        EXPECT_EQ(lineOf([&] { client.setServerAddress(empty); }),
                  "Установка адреса сервера: http://display.example:81");
        EXPECT_EQ(client.serverAddress, QUrl("http://display.example:81"));
    }
}

TEST_F(ClientSettings, An_address_is_read_tolerantly)
{
    EXPECT_EQ(lineOf([&] { client.setServerAddress("http://display.example/a b"); }),
              "Установка адреса сервера: http://display.example/a b");
    EXPECT_TRUE(client.serverAddress.isValid());
    EXPECT_EQ(client.serverAddress.toString(QUrl::FullyEncoded), "http://display.example/a%20b");
}

TEST_F(ClientSettings, An_address_that_cannot_be_read_is_taken_as_Qt_makes_it)
{
    EXPECT_EQ(lineOf([&] { client.setServerAddress("http://:::x"); }),
              "Установка адреса сервера: " + QUrl("http://:::x").toString());
    EXPECT_EQ(client.serverAddress, QUrl("http://:::x"));
}

TEST_F(ClientSettings, A_timeout_below_2_seconds_is_1)
{
    const std::pair<int, int> rows[] = {{-1000, 1}, {-1, 1}, {0, 1}, {1, 1}, {2, 2}, {7, 7}};
    for (const auto &[asked, set] : rows) {
        SCOPED_TRACE(asked);
        EXPECT_EQ(lineOf([&, value = asked] { client.setTimeout(value); }),
                  QString("Установка таймаута обращения к серверу: %1 с.").arg(set));
        EXPECT_EQ(rest->requestTimeout(), set);
        EXPECT_EQ(rest->calls().constLast(), QString("setRequestTimeout %1").arg(set));
    }
}

TEST_F(ClientSettings, The_timeout_logged_is_the_one_that_the_REST_client_reports)
{
    class Limited : public support::RecordingRestClient
    {
        int requestTimeout() const override { return 5; }
    };
    client.restClient = QSharedPointer<Limited>::create();
    EXPECT_EQ(lineOf([&] { client.setTimeout(7); }),
              "Установка таймаута обращения к серверу: 5 с.");
}

TEST_F(ClientSettings, An_interval_below_1_millisecond_is_250)
{
    const std::pair<int, int> rows[] = {{-1000, 250}, {-1, 250}, {0, 250}, {1, 1}, {40, 40}};
    for (const auto &[asked, set] : rows) {
        SCOPED_TRACE(asked);
        EXPECT_EQ(lineOf([&, value = asked] { client.setInterval(value); }),
                  QString("Установка интервала отправки сообщений: %1 мс.").arg(set));
        EXPECT_EQ(client.timer->interval(), set);
        EXPECT_FALSE(client.timer->isActive());
    }
}

TEST_F(ClientSettings, Another_queue_releases_the_one_before)
{
    auto first = QSharedPointer<Queue>::create();
    const QWeakPointer<Queue> watched = first;
    client.setMessages(std::move(first));
    EXPECT_EQ(client.messages, watched.toStrongRef());

    client.setMessages(queue);
    EXPECT_EQ(client.messages, queue);
    EXPECT_TRUE(watched.isNull());
}

TEST_F(ClientSettings, Of_the_queue_handed_over_the_client_holds_one_reference)
{
    auto given = QSharedPointer<Queue>::create();
    const QWeakPointer<Queue> watched = given;
    client.setMessages(std::move(given));
    client.messages.reset();
    EXPECT_TRUE(watched.isNull());
}

} // namespace
