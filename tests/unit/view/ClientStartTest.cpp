// What the client does when its thread starts, and what it leaves until then.

#include "ClientFixture.h"

#include <log4qt/logmanager.h>

namespace {

const QString addressLine = "Установка адреса сервера: %1";
const QString timeoutLine = "Установка таймаута обращения к серверу: %1 с.";
const QString intervalLine = "Установка интервала отправки сообщений: %1 мс.";

/// Writes down what is called, among the calls that the REST client remembers.
class JournalingClient : public ProbedClient
{
public:
    void setServerAddress(const QString &address) override
    {
        note("setServerAddress '" + address + "'");
        ProbedClient::setServerAddress(address);
    }
    void setTimeout(int seconds) override
    {
        note(QString("setTimeout %1").arg(seconds));
        ProbedClient::setTimeout(seconds);
    }
    void setInterval(int milliseconds) override
    {
        note(QString("setInterval %1").arg(milliseconds));
        ProbedClient::setInterval(milliseconds);
    }

private:
    // Through a call that the REST client remembers, so that there is one order of all.
    void note(const QString &call) { restClient->setTargetAlias("| " + call); }
};

class ClientStart : public ClientFixture
{
};

TEST_F(ClientStart, A_new_client_has_read_no_setting_and_started_nothing)
{
    host.config().setValue("ViewConnector:server", "http://display.example");
    host.config().setValue("ViewConnector:interval", 77);
    const ProbedClient fresh;
    EXPECT_EQ(fresh.serverAddress, QUrl("http://127.0.0.1:38080"));
    EXPECT_NE(fresh.timer->interval(), 77);
    EXPECT_FALSE(fresh.timer->isActive());
    EXPECT_EQ(fresh.restClient, nullptr);
    EXPECT_EQ(rest->calls(), QStringList());
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(ClientStart, The_REST_client_is_prepared_before_the_settings_are_applied)
{
    JournalingClient journaling;
    journaling.onStart();
    const QStringList expected{"setLogger viewconnector",
                               "setTargetAlias tavro-view",
                               "setCompactLogs true",
                               "setTargetAlias | setServerAddress ''",
                               "setTargetAlias | setTimeout -1",
                               "setRequestTimeout 1",
                               "setTargetAlias | setInterval -1"};
    EXPECT_EQ(rest->calls(), expected);
}

TEST_F(ClientStart, The_settings_are_passed_on_as_they_are)
{
    host.config().setValue("ViewConnector:server", "http://display.example:81");
    host.config().setValue("ViewConnector:timeout", 7);
    host.config().setValue("ViewConnector:interval", 40);
    JournalingClient journaling;
    journaling.onStart();
    const QStringList expected{"setTargetAlias | setServerAddress 'http://display.example:81'",
                               "setTargetAlias | setTimeout 7", "setRequestTimeout 7",
                               "setTargetAlias | setInterval 40"};
    EXPECT_EQ(rest->calls().mid(3), expected);
}

TEST_F(ClientStart, Without_settings_it_posts_to_the_loopback_address_within_1_s_every_250_ms)
{
    client.onStart();
    EXPECT_EQ(client.serverAddress, QUrl("http://127.0.0.1:38080"));
    EXPECT_EQ(rest->requestTimeout(), 1);
    EXPECT_EQ(client.timer->interval(), 250);
}

TEST_F(ClientStart, It_logs_address_timeout_and_interval_in_this_order)
{
    client.onStart();
    const QStringList expected{addressLine.arg("http://127.0.0.1:38080"), timeoutLine.arg(1),
                               intervalLine.arg(250)};
    EXPECT_EQ(log.textsOf("viewconnector"), expected);
    EXPECT_EQ(log.lines().size(), 3);
    for (const auto &line : log.lines())
        EXPECT_EQ(line.level, QtInfoMsg);
}

TEST_F(ClientStart, The_REST_client_logs_to_the_clients_own_logger)
{
    client.onStart();
    EXPECT_EQ(client.logger, Log4Qt::LogManager::logger("viewconnector"));
    EXPECT_EQ(rest->loggerSet(), client.logger);
}

TEST_F(ClientStart, The_REST_client_comes_from_the_hosts_factory)
{
    client.onStart();
    EXPECT_EQ(client.restClient, rest.shared());
}

TEST_F(ClientStart, Starting_again_replaces_the_REST_client)
{
    client.onStart();
    const support::InjectedRestClient another;
    client.onStart();
    EXPECT_EQ(client.restClient, another.shared());
    EXPECT_EQ(another->calls().constFirst(), "setLogger viewconnector");
}

TEST_F(ClientStart, It_posts_nothing_and_leaves_the_timer_off_even_if_something_waits)
{
    insert(Type::Configure);
    client.onStart();
    EXPECT_FALSE(client.timer->isActive());
    QCoreApplication::processEvents();
    EXPECT_EQ(rest->postCount(), 0);
}

TEST_F(ClientStart, A_client_that_missed_the_start_of_its_thread_starts_with_the_first_message)
{
    client.hasMessage();
    EXPECT_EQ(client.restClient, nullptr); // nothing to send, nothing to start
    host.config().setValue("ViewConnector:server", "http://display.example");
    insert(Type::Content);
    client.hasMessage();
    EXPECT_EQ(rest->postCount(), 1);
    EXPECT_EQ(rest->posts().constFirst().url, QUrl("http://display.example/content"));
    EXPECT_EQ(log.textsOf("viewconnector").size(), 3);

    insert(Type::Content);
    client.onTimeout();
    EXPECT_EQ(rest->postCount(), 2);
    EXPECT_EQ(log.textsOf("viewconnector").size(), 3); // started once
}

TEST_F(ClientStart, Settings_of_other_types_are_converted)
{
    host.config().setValue("ViewConnector:timeout", "7");
    host.config().setValue("ViewConnector:interval", "no number");
    client.onStart();
    EXPECT_EQ(rest->requestTimeout(), 7);
    EXPECT_EQ(client.timer->interval(), 250);
}

} // namespace
