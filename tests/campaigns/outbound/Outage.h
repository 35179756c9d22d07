#pragma once

#include "Fault.h"
#include "RecordedPosts.h"

#include <support/FaultProxy.h>
#include <support/FreshSingletons.h>
#include <support/ScriptedServer.h>

#include <plugin/ViewConnector.h>

#include <QHash>
#include <QSharedPointer>

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

/// The plug-in, a display, and a proxy between them whose faults and recoveries can be played one
/// after the other.
class Outage : public testing::Test
{
public: // for the faults
    /// From now on the display's address is one of https.
    void useTls();
    /// From now on the display's address is a name that was never looked up, whose look-up hangs.
    void hangNameLookup();

    support::FreshSingletons singletons;
    support::ScriptedServer display;
    support::FaultProxy proxy{display.port()};

protected:
    using Type = view::Message::Type;

    static constexpr auto interval = std::chrono::milliseconds(10);

    Outage();
    ~Outage() override;

    /// How long a post may take, before the fault strikes.
    void setTimeoutFor(const Fault &fault) const;

    /// Everything works again, and the display gives this answer, which accepts.
    void heal(const support::ScriptedAnswer &healthy = support::ScriptedAnswer::ok());

    /// Queues a message that has a number of its own, which it returns. It notes how long the
    /// plug-in kept its caller.
    int queue(Type type, qsizetype pictureBytes = 1000);

    /// A first picture, and while it is posted, in a random order: a burst of messages of every
    /// type, and pictures. Returns the numbers of those that the display must get, in their order.
    /// A large picture takes longer to post than the system takes bytes at once.
    QList<int> queueEverything(qsizetype firstPictureBytes = 8 * 1024 * 1024);

    /// Waits until a post has ended that began after this was called, so that what is queued by now
    /// cannot go with an older message.
    bool waitForAnAttempt() const;

    /// Waits until the plug-in has nothing left to send, which all must have been delivered then.
    bool waitUntilAllIsSent() const;

    /// That all of these were delivered and no others, each with one attempt that succeeded, and
    /// that every request and every connection was an attempt of its own. In a whole campaign,
    /// whose posts have their time: that every attempt arrived, or every one that succeeded if the
    /// fault let none through.
    void expectDelivered(const QList<int> &expected, const Fault &fault, int connections) const;

    /// Before the next outage: forgets what this one brought.
    void tidyUp();

    /// Prints how long the plug-in kept its callers.
    void reportHostThread() const;

    QSharedPointer<RecordedPosts> posts = QSharedPointer<RecordedPosts>::create();
    std::mt19937 random;

private:
    class Connector;

    static int shortTimeout();
    void setServerAddress(const QString &address) const;

    std::unique_ptr<Connector> m_plugin;
    bool m_usesTls = false;
    int m_lastNumber = 0;
    int m_lastName = 0;
    std::vector<qint64> m_keptNs; // how long each `queue` took
};
