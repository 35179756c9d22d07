#pragma once

#include "SteppedDisplay.h"

#include <PluginLoader.h>
#include <support/FaultProxy.h>
#include <support/LogCapture.h>
#include <support/PluginHost.h>
#include <support/ScriptedServer.h>

#include <chrono>
#include <memory>
#include <random>
#include <string>
#include <thread>

/**
 * One life of the plug-in in a register of its own: it is loaded, started and used until its client
 * is in a given state, and then ended.
 *
 * Owner: the program; one at a time, since a process has one plug-in. Thread: the main thread.
 * Errors: std::exception if the state is unknown or not reached.
 * Shut-down: `end`; a life that is not ended goes on as the process exits.
 */
class Life
{
public:
    using Clock = std::chrono::steady_clock;

    /// `state` is one of "never-started", "starting", "idle", "waiting", "retrying", "posting",
    /// "posting-in-vain", "connecting", "encrypting", which ends in vain again and again, and
    /// "subscribing" to an ad service, which answers nothing, or never ends its head or body.
    Life(const std::string &state, std::mt19937 &random);
    Q_DISABLE_COPY_MOVE(Life)

    /// Ends, destroys and unloads the plug-in. Returns how long that took.
    Clock::duration end();

private:
    void start(std::chrono::milliseconds interval, int postTimeoutSeconds = 1);
    void reachIdle();
    void reachWaiting();
    void reachRetrying();
    void reachPosting(int postTimeoutSeconds = 1);
    void reachConnecting();
    void reachEncrypting();
    void reachSubscribing();
    void waitUntilLost() const;

    int upTo(int most);

    std::mt19937 &m_random;
    const support::LogCapture m_log;
    SteppedDisplay m_display;
    std::unique_ptr<support::FaultProxy> m_tls; // before the display, if it is one of https
    std::unique_ptr<support::ScriptedServer> m_adService;
    std::unique_ptr<PluginLoader> m_loader;    // of a plug-in that is never started
    std::unique_ptr<bench::PluginHost> m_host; // of any other
    bool m_answersAtTheEnd = false;
};
