#include "BusyTill.h"
#include "UnreliableDisplay.h"

#include <campaigns/support/Campaign.h>
#include <campaigns/support/ProcessState.h>
#include <support/FreshSingletons.h>
#include <support/MemoryIsOurs.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <QJsonDocument>

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace {

using namespace std::chrono_literals;
using campaign::ProcessState;
using Type = view::Message::Type;

constexpr auto stepTime = 50ms;
constexpr auto interval = 20ms;
constexpr auto postTime = 2s;

/// CAMPAIGN_SOAK_SECONDS in the environment sets another duration.
int durationSeconds()
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("CAMPAIGN_SOAK_SECONDS", &isGiven);
    return isGiven ? given : campaign::scaled(3600, 60);
}

class Soak : public testing::Test
{
protected:
    Soak()
    {
        previous = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &,
                                             const QString &) {}); // a line for each request
        auto &config = singletons.config();
        config.setValue("ViewConnector:server", QString("http://127.0.0.1:%1").arg(display.port()));
        config.setValue("ViewConnector:port", 0);
        config.setValue("ViewConnector:interval", static_cast<int>(interval.count()));
        config.setValue("ViewConnector:timeout", static_cast<int>(postTime.count()));
        for (int i = 1; i <= 3; ++i)
            config.setValue(QString("View.ADTimetable.ad%1:index").arg(i), i);
        till = std::make_unique<BusyTill>(campaign::seed());
        leaveAlone();
        till->stepOfEachKind(); // so that all that is opened once is open
        leaveAlone();
    }
    ~Soak() override { qInstallMessageHandler(previous); }

    /// For longer than a post and an interval, and until nothing waits.
    void leaveAlone()
    {
        ASSERT_TRUE(support::waitFor([this] { return till->hasNothingToSend(); }, 60s));
        support::letPass(postTime + interval);
        display.noteArrivals();
    }

    /// Returns how many steps that were.
    qint64 workFor(std::chrono::seconds time)
    {
        QElapsedTimer timer;
        timer.start();
        qint64 steps = 0;
        for (; timer.elapsed() < std::chrono::milliseconds(time).count(); ++steps) {
            till->step();
            display.follow();
            support::waitFor([&] { return timer.elapsed() >= steps * stepTime.count(); });
            if (steps % stepsOfSample == 0)
                resident.push_back(ProcessState::now().residentBytes);
        }
        return steps;
    }

    /// The slope of the line through the samples, without those of the first quarter, in which what
    /// is kept for good is allocated.
    double growthBytesPerHour() const
    {
        constexpr double hourSeconds = 3600;
        const auto first = resident.size() / 4;
        const auto count = static_cast<double>(resident.size() - first);
        const double middle = static_cast<double>(first) + (count - 1) / 2;
        const double mean = std::accumulate(resident.begin() + static_cast<std::ptrdiff_t>(first),
                                            resident.end(), 0.0) /
                            count;
        double products = 0;
        double squares = 0;
        for (auto i = first; i < resident.size(); ++i) {
            const double seconds = static_cast<double>(i) - middle;
            products += seconds * (static_cast<double>(resident[i]) - mean);
            squares += seconds * seconds;
        }
        return products / squares * hourSeconds;
    }

    static QByteArray path(Type type)
    {
        switch (type) {
        case Type::UpdateDocument:
            return "/updateDocument";
        case Type::QrPayment:
            return "/qrPayment";
        case Type::ShowAd:
            return "/showAD";
        case Type::PriceList:
            return "/priceList";
        case Type::ImageData:
            return "/image";
        case Type::Content:
            return "/content";
        case Type::PaymentDraft:
            return "/paymentdraft";
        default:
            return "/configure";
        }
    }

    void expectNewestAtDisplay() const
    {
        const auto newest = till->newest();
        EXPECT_EQ(newest.size(), 8);
        for (auto message = newest.begin(); message != newest.end(); ++message)
            EXPECT_EQ(display.latest(path(message.key())),
                      QJsonDocument::fromVariant(*message).toJson(QJsonDocument::Compact));
    }

    static constexpr int stepsOfSample = 20;

    QtMessageHandler previous = nullptr;
    support::FreshSingletons singletons;
    UnreliableDisplay display{std::chrono::seconds(campaign::scaled(10, 2))};
    std::unique_ptr<BusyTill> till;
    std::vector<qint64> resident; // once in a second
};

} // namespace

TEST_F(Soak, With_a_display_that_is_down_half_of_the_time_leaves_the_last_state_and_no_trace)
{
    const int seconds = durationSeconds();
    resident.reserve(static_cast<std::size_t>(seconds) * 2);
    const auto before = ProcessState::now();
    const auto steps = workFor(std::chrono::seconds(seconds));

    display.fail();
    support::letPass(postTime + interval); // then nothing is being posted that could succeed
    till->stepOfEachKind();
    display.recover();
    leaveAlone();
    expectNewestAtDisplay();
    EXPECT_EQ(display.lastPicture(), till->picturesAsked());

    ProcessState after;
    support::waitFor([&] { // what has ended may still have to be freed
        after = ProcessState::now();
        return after.threads == before.threads && after.descriptors == before.descriptors;
    });
    EXPECT_EQ(after.threads, before.threads);
    EXPECT_EQ(after.descriptors, before.descriptors);

    const auto eventsPerSecond = static_cast<double>(steps) / seconds;
    campaign::report("seconds", seconds);
    campaign::report("events a second", eventsPerSecond);
    campaign::report("messages asked for", static_cast<double>(till->asked()));
    campaign::report("messages arrived", static_cast<double>(display.arrived()));
    campaign::report("pictures asked for and arrived", till->picturesAsked());
    campaign::report("outages", display.outages());
    campaign::report("threads", after.threads);
    campaign::report("descriptors", after.descriptors);
    campaign::report("resident memory", static_cast<double>(resident.back()) / 1024, "KiB");
    campaign::report("resident memory growth", growthBytesPerHour() / 1024, "KiB an hour");
    if (campaign::isWhole()) {
        EXPECT_GT(eventsPerSecond, 19);
    }
    if (support::memoryIsOurs && campaign::isWhole()) {
        EXPECT_LT(growthBytesPerHour(), 1024 * 1024);
    }
}
