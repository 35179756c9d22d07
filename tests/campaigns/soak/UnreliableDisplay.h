#pragma once

#include <support/FaultProxy.h>
#include <support/ScriptedServer.h>

#include <QElapsedTimer>
#include <QHash>

#include <chrono>

/**
 * A display that can be reached for a while, then refuses connections for a while, then can be
 * reached, then swallows what comes, and so on. It remembers the latest message of each path.
 *
 * Owner and thread: the test, which calls `follow` again and again.
 */
class UnreliableDisplay
{
public:
    /// Each state lasts that long.
    explicit UnreliableDisplay(std::chrono::milliseconds period) : m_period(period) {}

    int port() const { return m_proxy.port(); }

    /// Changes the state when it is time, and notes what has arrived.
    void follow();
    /// Refuses connections from now on, unless `follow` is called again.
    void fail() { enter(State::Refusing); }
    /// Can be reached from now on, unless `follow` is called again.
    void recover();
    void noteArrivals();

    qint64 arrived() const { return m_arrived; }
    int outages() const { return m_outages; }
    QByteArray latest(const QByteArray &path) const { return m_latest.value(path); }
    /// The number of the picture that came last, if each that came was the next one or the same
    /// again; otherwise -1.
    int lastPicture() const { return m_lastPicture; }

private:
    enum class State { Reachable, Refusing, ReachableAgain, Swallowing };

    void enter(State state);
    void notePicture(const QByteArray &body);

    const std::chrono::milliseconds m_period;
    support::ScriptedServer m_server;
    support::FaultProxy m_proxy{m_server.port()};
    QElapsedTimer m_sinceChange;
    State m_state = State::Reachable;
    int m_outages = 0;
    qint64 m_arrived = 0;
    QHash<QByteArray, QByteArray> m_latest; // body by path
    int m_lastPicture = 0;
};
