#pragma once

#include "ProbedConnector.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <support/FreshSingletons.h>
#include <support/KeepsToContract.h>
#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/RecordingRestClient.h>
#include <support/Wait.h>

#include <QCoreApplication>

#include <memory>

namespace view {

inline void PrintTo(const Message &message, std::ostream *out)
{
    *out << static_cast<int>(message.type) << ' ';
    PrintTo(message.data, out);
}

} // namespace view

/// A plug-in in a host of its own, with a REST client without a network and, once started, a server
/// on a port that the system chose.
class PluginFixture : public testing::Test
{
protected:
    using Type = view::Message::Type;

    PluginFixture()
    {
        host.config().setValue("ViewConnector:port", 0);
        host.config().setValue("ViewConnector:interval", 1);
    }

    /// What waits, taken out in the order of delivery. Only while the plug-in is not started. Each
    /// must keep to the contract with the display.
    QList<view::Message> takeWaiting() const
    {
        QList<view::Message> waiting;
        while (const auto first = connector->messages->lock()->first()) {
            waiting.append(*first);
            support::expectKeepsToContract(
                QString::fromLatin1(messageTypes.at(static_cast<std::size_t>(first->type)).name),
                QJsonObject::fromVariantMap(first->data));
            connector->messages->lock()->remove(first->type);
        }
        return waiting;
    }

    bool isQueueEmpty() const { return connector->messages->lock()->isEmpty(); }
    bool waitUntilAllSent() const
    {
        return support::waitFor([this] { return isQueueEmpty(); });
    }

    /// Returns when the client thread has dealt with all that it was sent so far.
    void flushClientThread() const
    {
        QMetaObject::invokeMethod(
            connector->client.data(), [] {}, Qt::BlockingQueuedConnection);
    }

    support::LogCapture log;
    support::FreshSingletons host;
    support::InjectedRestClient rest;
    std::unique_ptr<RecordingConnector> connector = std::make_unique<RecordingConnector>();
};
