#include "Memory.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <system_error>

namespace bench {

namespace {

struct Cause
{
    const char *name;
    std::string_view inPath; // what the path of its mappings holds
};

constexpr std::string_view heapOfAThread = "[heap of a thread]";

/// The first that fits.
constexpr std::array causeTable{
    Cause{"plug-in", "/viewconnector.so"},
    Cause{"host", "/libregisterhost"},
    Cause{"libcurl", "/libcurl"},
    Cause{"libmicrohttpd", "/libmicrohttpd"},
    Cause{"OpenSSL: libcrypto", "/libcrypto"},
    Cause{"OpenSSL: libssl", "/libssl"},
    Cause{"Qt Core", "/libQt6Core"},
    Cause{"Qt Network", "/libQt6Network"},
    Cause{"other libraries", ".so"},
    Cause{"heap of the main thread", "[heap]"},
    Cause{"heaps of other threads", heapOfAThread},
    Cause{"other files", "/"},
    Cause{"thread stacks, anonymous", ""},
};

std::string_view readMappings()
{
    static std::array<char, 1 << 21> text;
    const int file = ::open("/proc/self/smaps", O_RDONLY | O_CLOEXEC);
    std::size_t size = 0;
    ssize_t got = -1;
    while (file >= 0 && (got = ::read(file, text.data() + size, text.size() - size)) > 0)
        size += static_cast<std::size_t>(got);
    const int error = errno;
    if (file >= 0)
        ::close(file);
    if (got < 0)
        throw std::system_error(error, std::generic_category(), "/proc/self/smaps");
    return {text.data(), size};
}

/// Cuts the first line off.
std::string_view nextLine(std::string_view &text)
{
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

/// "Rss:      12 kB"
long kilobytes(std::string_view line)
{
    const auto digits = line.find_first_of("0123456789");
    long value = 0;
    if (digits != std::string_view::npos)
        std::from_chars(line.data() + digits, line.data() + line.size(), value);
    return value;
}

/// A mapping begins with a line such as "55d0c000-55d0e000 r--p 00000000 fe:00 1234   /usr/lib/x".
bool isMapping(std::string_view line)
{
    return line.substr(0, line.find(' ')).find('-') != std::string_view::npos;
}

/// glibc begins the heap of a thread at a multiple of the most that it lets it grow to.
bool isHeapOfAThread(std::string_view mapping)
{
    constexpr std::uintptr_t most = 64 * 1024 * 1024;
    std::uintptr_t start = 1;
    std::from_chars(mapping.data(), mapping.data() + mapping.size(), start, 16);
    return start % most == 0;
}

std::string_view pathOf(std::string_view mapping)
{
    const auto start = mapping.find_first_of("/[");
    if (start != std::string_view::npos)
        return mapping.substr(start);
    return isHeapOfAThread(mapping) ? heapOfAThread : std::string_view();
}

std::size_t causeOf(std::string_view path)
{
    const auto *cause = std::find_if(causeTable.begin(), causeTable.end(), [&](const Cause &each) {
        return path.find(each.inPath) != std::string_view::npos;
    });
    return static_cast<std::size_t>(cause - causeTable.begin());
}

} // namespace

Memory Memory::now()
{
    Memory memory;
    memory.add(readMappings());
    return memory;
}

void Memory::add(std::string_view mappings)
{
    static_assert(causeTable.size() == causes);
    Amount *amount = m_amounts.data();
    while (!mappings.empty()) {
        const auto line = nextLine(mappings);
        if (isMapping(line))
            amount = &m_amounts[causeOf(pathOf(line))];
        else if (line.starts_with("Rss:"))
            amount->rssKb += kilobytes(line);
        else if (line.starts_with("Anonymous:")) // dirty ones may be of a file that was just built
            amount->ownKb += kilobytes(line);
    }
}

QJsonObject Memory::toJson() const
{
    QJsonObject json;
    for (std::size_t i = 0; i < causes; ++i)
        json.insert(QString::fromLatin1(causeTable[i].name),
                    QJsonObject{{QStringLiteral("rss"), int(m_amounts[i].rssKb)},
                                {QStringLiteral("own"), int(m_amounts[i].ownKb)}});
    return json;
}

} // namespace bench
