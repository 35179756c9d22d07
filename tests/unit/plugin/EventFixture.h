#pragma once

#include "PluginFixture.h"

/// The two ways in which a host may deliver an event.
enum class Way { DirectCall, QueuedSlot };

/// A plug-in that gets events in one of the ways.
class EventFixture : public PluginFixture, public testing::WithParamInterface<Way>
{
protected:
    using Message = view::Message;

    /// The messages that an event with this code and these arguments leads to.
    QList<Message> messagesOf(int code, const QVariantMap &arguments = {})
    {
        connector->takeSent();
        const Event event(code, arguments);
        if (GetParam() == Way::DirectCall) {
            static_cast<BaseActivityListener *>(connector.get())->handleEvent(event);
        } else {
            EXPECT_TRUE(QMetaObject::invokeMethod(connector.get(), "handleEvent",
                                                  Qt::QueuedConnection, Q_ARG(Event, event)));
            EXPECT_TRUE(connector->sent.isEmpty());
            QCoreApplication::processEvents();
        }
        EXPECT_TRUE(log.lines().isEmpty());
        return connector->takeSent();
    }

    static QList<Message> none() { return {}; }
};

inline std::string nameOf(const testing::TestParamInfo<Way> &info)
{
    return info.param == Way::DirectCall ? "by_a_direct_call" : "by_the_slot";
}

#define INSTANTIATE_FOR_BOTH_WAYS(Fixture)                                                         \
    INSTANTIATE_TEST_SUITE_P(Delivered, Fixture,                                                   \
                             testing::Values(Way::DirectCall, Way::QueuedSlot), nameOf)
