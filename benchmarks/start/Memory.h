#pragma once

#include <QJsonObject>

#include <array>
#include <string_view>

namespace bench {

/**
 * How much memory the process has, by what it is for: each mapping counts for the library or the
 * use that it belongs to.
 *
 * Owner and thread: that of the caller. Errors: `now` throws std::system_error.
 */
class Memory
{
public:
    /// Takes nothing from the heap itself.
    static Memory now();

    /// {"host": {"rss": KB, "own": KB}, …}
    QJsonObject toJson() const;

private:
    struct Amount
    {
        long rssKb = 0; // in memory, with the pages that other processes share
        long ownKb = 0; // of that, what this process alone has: what it has written
    };
    static constexpr std::size_t causes = 13;

    void add(std::string_view mappings);

    std::array<Amount, causes> m_amounts;
};

} // namespace bench
