#pragma once

#include <support/FreshSingletons.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <plugin/ViewConnector.h>

#include <gtest/gtest.h>

#include <memory>

/// A plug-in that was started against a scripted display, with short intervals.
class RunningPlugin : public testing::Test
{
protected:
    static constexpr auto interval = std::chrono::milliseconds(60);

    RunningPlugin()
    {
        auto &config = singletons.config();
        config.setValue(QStringLiteral("ViewConnector:server"), display.url({}).toString());
        config.setValue(QStringLiteral("ViewConnector:port"), 0);
        config.setValue(QStringLiteral("ViewConnector:interval"), int(interval.count()));
        plugin->init();
    }

    static view::Message numbered(view::Message::Type type, int number)
    {
        return {type, {{QStringLiteral("n"), number}}};
    }

    static QByteArray numberedBody(int number)
    {
        return "{\"n\":" + QByteArray::number(number) + '}';
    }

    bool waitForRequests(qsizetype count)
    {
        return support::waitFor([&] { return display.requestCount() >= count; });
    }

    /// Waits until the configuration is delivered and its pause is over.
    void letConfigurationPass()
    {
        ASSERT_TRUE(waitForRequests(1));
        support::letPass(3 * interval);
    }

    QByteArrayList paths(qsizetype from = 0) const
    {
        QByteArrayList paths;
        for (const auto &request : display.requests().mid(from))
            paths.append(request.path);
        return paths;
    }

    QByteArrayList bodies(qsizetype from) const
    {
        QByteArrayList bodies;
        for (const auto &request : display.requests().mid(from))
            bodies.append(request.body);
        return bodies;
    }

    support::FreshSingletons singletons;
    support::ScriptedServer display;
    std::unique_ptr<ViewConnector> plugin = std::make_unique<ViewConnector>();
};
