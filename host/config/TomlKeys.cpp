#include "TomlKeys.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::string_view endsOfKeys = "\n=,[]{}";

/// The quotation marks that a text begins with at the front, and ends with; nothing if none does.
std::string_view quotationMarks(std::string_view toml)
{
    for (const std::string_view marks : {R"(""")", "'''", R"(")", "'"}) {
        if (toml.starts_with(marks))
            return marks;
    }
    return {};
}

/// Where the text ends whose marks are at the front: behind its last mark, or where it breaks off.
std::size_t endOfText(std::string_view toml, std::string_view marks)
{
    const bool hasEscapes = marks.front() == '"';
    const bool isOneLine = marks.size() == 1;
    for (auto at = marks.size(); at < toml.size(); ++at) {
        if (hasEscapes && toml[at] == '\\')
            ++at;
        else if (isOneLine && toml[at] == '\n')
            return at;
        else if (toml.substr(at).starts_with(marks))
            // Up to two more of the same are its last characters.
            return isOneLine ? at + 1
                             : std::min(toml.find_first_not_of(marks.front(), at), toml.size());
    }
    return toml.size();
}

} // namespace

int lineOfDeepKey(std::string_view toml)
{
    int line = 1;
    int parts = 1;
    while (!toml.empty()) {
        std::size_t size = 1;
        if (const auto marks = quotationMarks(toml); !marks.empty()) {
            size = endOfText(toml, marks);
            line += static_cast<int>(std::count(
                toml.begin(), std::next(toml.begin(), static_cast<std::ptrdiff_t>(size)), '\n'));
        } else if (toml.front() == '#') {
            size = std::min(toml.find('\n'), toml.size());
        } else if (toml.front() == '.') {
            if (++parts > maxKeyParts)
                return line;
        } else if (endsOfKeys.find(toml.front()) != std::string_view::npos) {
            parts = 1;
            line += toml.front() == '\n' ? 1 : 0;
        }
        toml.remove_prefix(size);
    }
    return 0;
}
