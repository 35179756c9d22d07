#pragma once

#include <QString>

#include <array>
#include <chrono>

/**
 * Tells the log what an HttpServer refused, at most one line a minute of each kind: abuse must not
 * fill the disk. The next line of a kind says how many were left out before it.
 *
 * Thread: the network thread, all of it.
 */
class HttpRefusals
{
public:
    enum class Kind {
        Syntax,
        Size,
        Guard,
        Deadline,
        Room,
    };
    using Clock = std::chrono::steady_clock;

    static constexpr auto pause = std::chrono::minutes(1);

    void note(Kind kind, const QString &what, Clock::time_point now = Clock::now());
    /// The same for a request, of whose path the line shows the beginning.
    void noteRequest(Kind kind, const QString &path, const QString &why);

private:
    struct Series
    {
        Clock::time_point nextLine; // the epoch: at once
        int leftOut = 0;
    };
    static constexpr std::size_t kindCount = 5;

    std::array<Series, kindCount> m_series;
};
