#include "Life.h"

#include <support/Wait.h>

#include <ActivityNotifier.h>
#include <Config.h>
#include <Receipt.h>
#include <Singleton.h>

#include <array>
#include <stdexcept>

namespace {

using namespace std::chrono_literals;

constexpr auto shortInterval = 1ms;
constexpr auto longInterval = 60'000ms;
/// Far longer than a plug-in may take to end.
constexpr int longPostTimeoutSeconds = 20;
constexpr int secondScreenContent = 261;

template <class Condition>
void waitUntil(Condition condition, const char *what)
{
    if (!support::waitFor(condition))
        throw std::runtime_error(what);
}

} // namespace

Life::Life(const std::string &state, std::mt19937 &random) : m_random(random)
{
    if (state == "never-started")
        m_loader = std::make_unique<PluginLoader>(QStringLiteral(VIEWCONNECTOR_PLUGIN));
    else if (state == "starting")
        start(shortInterval);
    else if (state == "idle")
        reachIdle();
    else if (state == "waiting")
        reachWaiting();
    else if (state == "retrying")
        reachRetrying();
    else if (state == "posting")
        reachPosting();
    else if (state == "posting-in-vain") // also to the very second at which the plug-in gives up
        reachPosting(upTo(1) == 0 ? 1 : longPostTimeoutSeconds);
    else if (state == "connecting")
        reachConnecting();
    else if (state == "encrypting")
        reachEncrypting();
    else if (state == "subscribing")
        reachSubscribing();
    else
        throw std::invalid_argument("unknown state: " + state);
    m_answersAtTheEnd = state == "posting";
    // A plug-in ends at any moment.
    std::this_thread::sleep_for(std::chrono::microseconds(upTo(3000)));
}

/// Three messages then wait, each of its own type: settings, receipt and content.
void Life::start(std::chrono::milliseconds interval, int postTimeoutSeconds)
{
    auto &config = Singleton<Config>::instance();
    config.setValue(QStringLiteral("ViewConnector:timeout"), postTimeoutSeconds);
    config.setValue(QStringLiteral("View.Style:showImages"), true);
    config.setValue(QStringLiteral("ViewConnector.Ads:url"),
                    m_adService ? m_adService->url().toString() : QVariant());
    const auto address =
        m_tls ? "https://127.0.0.1:" + std::to_string(m_tls->port()) : m_display.url();
    m_host = std::make_unique<bench::PluginHost>(address, interval);
    m_host->setDocument(QSharedPointer<Receipt>::create(1));
    Singleton<ActivityNotifier>::instance().notify(Event(secondScreenContent));
}

void Life::reachIdle()
{
    m_display.listen();
    start(shortInterval);
    for (int message = 0; message < 3; ++message) {
        m_display.receive();
        m_display.answer();
    }
    std::this_thread::sleep_for(5 * shortInterval); // beyond the last answer's pause
}

void Life::reachWaiting()
{
    m_display.listen();
    start(longInterval);
    m_display.receive();
    m_display.answer();
}

void Life::reachRetrying()
{
    start(shortInterval);
    waitUntilLost();
}

void Life::reachPosting(int postTimeoutSeconds)
{
    m_display.listen();
    start(shortInterval, postTimeoutSeconds);
    m_display.receive();
}

void Life::reachConnecting()
{
    m_display.listenWithoutRoom();
    start(shortInterval, upTo(1) == 0 ? 1 : longPostTimeoutSeconds);
    waitUntil([this] { return m_display.isBeingConnected(); }, "the plug-in does not connect");
}

/// The certificate is of no authority that is known.
void Life::reachEncrypting()
{
    m_tls = std::make_unique<support::FaultProxy>(m_display.port());
    m_tls->present(support::TlsIdentity::selfSigned());
    start(shortInterval);
    waitUntilLost();
}

void Life::reachSubscribing()
{
    using Answer = support::ScriptedAnswer;
    const std::array answers{Answer::blackHole(), Answer::drippingHeader(1ms),
                             Answer::dripping(1ms)};
    m_adService = std::make_unique<support::ScriptedServer>();
    m_adService->answer(answers.at(static_cast<std::size_t>(upTo(2))));
    start(shortInterval);
    waitUntil([this] { return m_adService->requestCount() == 1; },
              "the plug-in does not subscribe");
}

void Life::waitUntilLost() const
{
    const auto isLost = [this] {
        return !m_log.textsOf(QStringLiteral("viewconnector"))
                    .filter(QStringLiteral("нет связи"))
                    .isEmpty();
    };
    waitUntil(isLost, "the plug-in does not notice that the display cannot be reached");
}

Life::Clock::duration Life::end()
{
    std::jthread display;
    if (m_answersAtTheEnd)
        display = std::jthread([this, after = std::chrono::microseconds(upTo(20'000))] {
            std::this_thread::sleep_for(after);
            m_display.answer();
        });

    const auto start = Clock::now();
    m_host.reset();
    m_loader.reset();
    return Clock::now() - start;
}

int Life::upTo(int most)
{
    return std::uniform_int_distribution(0, most)(m_random);
}
