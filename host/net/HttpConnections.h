#pragma once

#include "HttpRefusals.h"

#include <HttpServerOptions.h>

#include <chrono>
#include <functional>
#include <map>

struct MHD_Connection;

/**
 * The open connections of an HttpServer: cuts those whose request or answer takes too long, and
 * makes room for new ones. libmicrohttpd only knows a time-out that each byte starts anew, and lets
 * new connections wait for room that a slow or busy client never leaves.
 *
 * Owner: the HttpDaemon. Thread: the network thread, all of it; a connection therefore never ends
 * between being found and being cut.
 */
class HttpConnections
{
public:
    using Clock = std::chrono::steady_clock;

    enum class Phase {
        Header,  ///< a request is awaited, or its header is not complete
        Body,    ///< the header is complete, the body is not
        Waiting, ///< the request is with the server's thread
        Answer,  ///< the answer is on its way
        Stream,  ///< an answer that has no end of its own is on its way
        Cut,     ///< given up, and about to be closed
    };

    /// So many may be about to be closed beyond those that are allowed.
    static constexpr int reserve = 16;

    HttpConnections(const HttpServerOptions &options, HttpRefusals &refusals);

    /// Whether a client that waits may be accepted. At the limit the connection is given up that
    /// has kept its place the longest without use: its request is incomplete, or its answer is not
    /// taken. If all are in use, the next to have been answered gives up its place; if all are
    /// streams, the oldest.
    bool makeRoom();
    void add(MHD_Connection *connection);
    void remove(MHD_Connection *connection);

    void enter(MHD_Connection *connection, Phase phase);
    /// The answer is out: the next request may take its time to begin, then to be complete.
    void awaitNext(MHD_Connection *connection);

    /// Cuts what is beyond its deadline; a request that is not complete is answered 408.
    void cutOverdue();
    /// Ends a connection. `status`, such as "408 Request Timeout", is what its client is told;
    /// null: nothing.
    void cut(MHD_Connection *connection, const char *status);
    /// Whether it was given up; a request that still completes on it is not to be delivered.
    bool isCut(MHD_Connection *connection) const;

    /// Before this no connection becomes overdue; the end of time if none can.
    Clock::time_point nextDeadline() const { return m_nextDeadline; }

private:
    struct Entry
    {
        int socket;
        Phase phase;
        Clock::time_point since; // of the request that is incomplete, or of the answer
        Clock::time_point deadline;
    };
    using Entries = std::map<MHD_Connection *, Entry>;

    Entry *longestIdle();
    Entry *longest(const std::function<bool(const Entry &)> &counts);
    static bool isBusy(const Entry &entry);
    void giveUp(Entry &entry);
    static void cut(Entry &entry, const char *status);
    void expect(const Entry &entry);
    static bool hasDeadline(Phase phase);
    Clock::duration allowed(Phase phase) const;

    const HttpServerOptions &m_options;
    HttpRefusals &m_refusals;
    Entries m_entries;
    bool m_isAwaited = false; // a client waits until one of the connections is answered
    Clock::time_point m_nextDeadline = Clock::time_point::max(); // or earlier, never later
};
