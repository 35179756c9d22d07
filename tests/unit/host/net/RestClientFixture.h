#pragma once

#include <RestClient.h>

#include <log4qt/logmanager.h>
#include <support/LogCapture.h>
#include <support/ScriptedServer.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

/// A client whose posts go to a scripted server.
class RestClientFixture : public testing::Test
{
protected:
    static constexpr auto loggerName = "restclient.test";

    RestClientFixture()
    {
        client.setLogger(Log4Qt::LogManager::logger(QLatin1String(loggerName)));
        client.setTargetAlias(QStringLiteral("Дисплей"));
    }

    int post(const QByteArray &body = "{}", const RestClient::Headers &headers = {})
    {
        QElapsedTimer timer;
        timer.start();
        const int result = client.post(server.url(QStringLiteral("/configure")), body, headers);
        elapsedMs = timer.elapsed();
        EXPECT_EQ(client.result(), result);
        return result;
    }

    /// Posts and expects it to be a success that arrived once.
    void expectDelivery()
    {
        const auto before = server.requestCount();
        EXPECT_EQ(post(), 0);
        EXPECT_EQ(server.requestCount(), before + 1);
    }

    support::LogCapture log;
    support::ScriptedServer server;
    RestClient client;
    qint64 elapsedMs = 0; // of the last post
};
