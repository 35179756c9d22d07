#pragma once

#include "GoodClient.h"

#include <campaigns/support/Campaign.h>
#include <support/MemoryIsOurs.h>
#include <support/RunningEndpoint.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <thread>

namespace inbound {

using namespace std::chrono_literals;

/// Bounds of time are only the specified ones in a whole campaign; other tests run on whatever
/// machine, beside whatever load.
inline std::chrono::milliseconds promptly()
{
    return support::memoryIsOurs ? std::chrono::milliseconds(campaign::scaled(1000, 30'000)) : 60s;
}

/// The plug-in's port under fire. The host's main thread runs its events all the time, and a timer
/// among them that notes the longest gap.
class Inbound : public RunningEndpoint
{
protected:
    Inbound()
    {
        // A line for each request would be all that the memory is used for.
        QLoggingCategory::setFilterRules(QStringLiteral("viewconnector.info=false"));
        plugin = std::make_unique<Counting>();
        QObject::connect(&m_beat, &QTimer::timeout, [this] {
            m_longestGap = std::max(m_longestGap, std::chrono::milliseconds(m_sinceBeat.restart()));
        });
        m_sinceBeat.start();
        m_beat.start(10ms);
    }
    ~Inbound() override { QLoggingCategory::setFilterRules({}); }

    void TearDown() override
    {
        campaign::report("longest gap of the main thread",
                         static_cast<double>(m_longestGap.count()), "ms");
        EXPECT_LE(m_longestGap, promptly());
    }

    void set(const char *key, int value) const
    {
        singletons.config().setValue(QLatin1String(key), value);
    }

    /// Runs this thread's events until `work` is done on another.
    static void runBeside(const std::function<void()> &work)
    {
        QEventLoop events;
        const std::jthread worker([&] {
            work();
            QMetaObject::invokeMethod(&events, &QEventLoop::quit, Qt::QueuedConnection);
        });
        events.exec();
    }

    /// The same while a good client asks time and again, and is answered promptly each time.
    /// Returns how often it asked.
    int runBesideGoodClient(const std::function<void()> &work) const
    {
        GoodClient good(port());
        runBeside([&] {
            work();
            good.end();
        });
        campaign::report("good requests meanwhile", good.asked());
        campaign::report("worst answer to one", static_cast<double>(good.worst().count()), "ms");
        EXPECT_GT(good.asked(), 0);
        EXPECT_EQ(good.missed(), 0);
        EXPECT_LE(good.worst(), promptly());
        return good.asked();
    }

    /// The status that one good client gets.
    int answerOfGoodClient(std::chrono::milliseconds deadline = 30s) const
    {
        int status = 0;
        runBeside([&] { status = GoodClient::ask(port(), deadline); });
        return status;
    }

    /// How many pictures the good clients have been given.
    int goodPictures() const { return static_cast<const Counting &>(*plugin).goodPictures; }

private:
    struct Counting : Connector
    {
        /// Pictures queue up one for each request, and are posted four a second. Here they are
        /// too many for that.
        void addMessage(const view::Message &message) override
        {
            if (message.type != view::Message::Type::ImageData)
                return ViewConnector::addMessage(message);
            const auto id = message.data.value(QStringLiteral("id")).toMap();
            if (id.value(QStringLiteral("value")).toByteArray() == GoodClient::goods())
                ++goodPictures;
        }

        int goodPictures = 0;
    };

    std::chrono::milliseconds m_longestGap{};
    QElapsedTimer m_sinceBeat;
    QTimer m_beat;
};

} // namespace inbound
