#pragma once

#include <relay/Relay.h>

#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/RawClient.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <gtest/gtest.h>

#include <chrono>
#include <optional>

/// A relay in the test's own process, with a target that answers as the test says.
class RelayFixture : public testing::Test
{
protected:
    using RawClient = support::RawClient;
    using ScriptedAnswer = support::ScriptedAnswer;

    RelayFixture() { start(Relay::defaultPatience); }

    void start(std::chrono::milliseconds patience)
    {
        relay.emplace(0, target.url(), patience);
        ASSERT_TRUE(relay->isListening()) << relay->errorString().toStdString();
        QObject::connect(&*relay, &Relay::exchanged, &*relay,
                         [this](const Exchange &exchange) { exchanges.append(exchange); });
    }

    RawClient::Answer send(const QByteArray &request) const
    {
        RawClient client(relay->port());
        client.send(request);
        return client.answer();
    }

    RawClient::Answer post(const QByteArray &path, const QByteArray &body) const
    {
        return send(RawClient::request(path, body));
    }

    /// Sends a request whose connection must be closed without an answer.
    void expectNoAnswer(const QByteArray &request) const
    {
        RawClient client(relay->port());
        client.send(request);
        EXPECT_TRUE(client.waitForClose());
        EXPECT_EQ(client.received(), QByteArray());
    }

    support::LogCapture log; // keeps the server's lines out of the test's output
    support::ScriptedServer target;
    std::optional<Relay> relay;
    QList<Exchange> exchanges;
};
