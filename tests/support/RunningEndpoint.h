#pragma once

#include <support/FreshSingletons.h>
#include <support/LogCapture.h>
#include <support/RawClient.h>
#include <support/ScriptedServer.h>

#include <plugin/ViewConnector.h>

#include <gtest/gtest.h>

#include <memory>

/// A plug-in that answers on a port that the system chose, and a count of what reached it.
class RunningEndpoint : public testing::Test
{
protected:
    RunningEndpoint()
    {
        auto &config = singletons.config();
        config.setValue(QStringLiteral("ViewConnector:server"), display.url({}).toString());
        config.setValue(QStringLiteral("ViewConnector:port"), 0);
    }

    void start()
    {
        plugin->init();
        QObject::connect(plugin->server.data(), &HttpServer::requestReceived, plugin->server.data(),
                         [this] { ++delivered; });
    }

    int port() const { return plugin->server->port(); }

    /// Whether a new client is answered as every request is.
    bool servesGoodClient()
    {
        support::RawClient client(port());
        client.send(support::RawClient::request("/good", "{}"));
        return isAcknowledgement(client.answer());
    }

    static bool isAcknowledgement(const support::RawClient::Answer &answer)
    {
        return answer.status == 200 && answer.header.startsWith("HTTP/1.") &&
               answer.header.contains(" 200 OK\r\n") &&
               answer.header.contains("\r\nContent-Type: application/json") &&
               answer.body.isEmpty();
    }

    struct Connector : ViewConnector
    {
        using ViewConnector::server;
    };

    support::FreshSingletons singletons;
    support::LogCapture log;
    support::ScriptedServer display;
    std::unique_ptr<Connector> plugin = std::make_unique<Connector>();
    int delivered = 0;
};
