#pragma once

#include "Answers.h"
#include "Mutants.h"
#include "Peer.h"

#include <QList>

#include <atomic>
#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace inbound {

/**
 * Sends mutants to a port over several connections at once, some behind one another on the same
 * one, and judges what comes back.
 *
 * What is well-formed goes out first and has to be acknowledged, each on its own; then the last of
 * a connection is sent, and the client ends the connection, or has the server end it. It stops at
 * the first fault.
 *
 * Owner: the test. Thread: `run` on one of the test's, which it blocks; `soFar` from any.
 */
class Attack
{
public:
    using Clock = std::chrono::steady_clock;

    struct Plan
    {
        int port = 0;
        int first = 0; // number of the first request
        int count = 0;
        int connections = 100;
        bool clientsWait = false; // malformed ones only, and the server has to end each connection
        std::chrono::milliseconds deadline{}; // for what is sent at once on a connection
    };

    Attack(const Mutants &mutants, const Plan &plan) : m_mutants(mutants), m_plan(plan) {}

    void run();

    int soFar() const { return m_judged; }
    /// What went wrong, with all that is needed to do it again; empty if nothing did.
    const std::string &fault() const { return m_fault; }
    /// How many answers had each status; 0: an end without any.
    const std::map<int, int> &statuses() const { return m_statuses; }

private:
    struct Sent
    {
        int number;
        Mutant mutant;
    };
    struct Connection
    {
        Peer peer;
        Answers answers;
        QList<Sent> awaited; // without their answers
        QByteArray unsent;
        int piece = 0; // sent at a time; 0: what fits
        Clock::time_point deadline;
        Clock::time_point lastEvent;
        bool isFinished = false;
        bool isAnswered = false; // the last one, that may have any answers
    };

    bool hasMore() const { return m_next < m_plan.first + m_plan.count; }
    static bool isAtLastOne(const Connection &connection);
    void open(Connection &connection);
    void load(Connection &connection);
    void goOn(Connection &connection, int events);
    void finish(Connection &connection) const;
    void send(Connection &connection) const;
    bool receive(Connection &connection);
    void judge(Connection &connection, int status);
    void judgeEnd(Connection &connection);
    void fail(const Sent &sent, const std::string &what);

    const Mutants &m_mutants;
    const Plan m_plan;
    int m_next = 0;
    std::vector<Connection> m_connections;
    std::atomic<int> m_judged = 0;
    std::string m_fault;
    std::map<int, int> m_statuses;
};

} // namespace inbound
