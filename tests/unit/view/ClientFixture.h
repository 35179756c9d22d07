#pragma once

#include "ProbedClient.h"

#include <gtest/gtest.h>

#include <support/FreshSingletons.h>
#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/RecordingRestClient.h>
#include <support/Wait.h>

/// A client on the test's own thread, a queue to send from, and a REST client without a network.
class ClientFixture : public testing::Test
{
protected:
    using Type = view::Message::Type;
    using Queue = Locker<view::Messages, QMutex>;

    ClientFixture() { client.setMessages(queue); }

    void start(int intervalMs)
    {
        host.config().setValue("ViewConnector:interval", intervalMs);
        client.onStart();
    }

    void insert(Type type, const QVariantMap &data = {}) { queue->lock()->insert({type, data}); }

    support::LogCapture log;
    support::FreshSingletons host;
    support::InjectedRestClient rest;
    const QSharedPointer<Queue> queue = QSharedPointer<Queue>::create();
    ProbedClient client;
};
