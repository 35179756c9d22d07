#include "TomlKeys.h"

#include <algorithm>
#include <vector>

namespace {

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

/// Follows the parts of keys through a file, one character at a time but for texts and comments.
class PartCount
{
public:
    int parts() const { return m_parts; }
    bool isTooDeep() const { return m_parts > maxKeyParts || m_levels.size() > moreThanAllowed; }

    void read(char c)
    {
        if (c == '.' && m_isKey)
            ++m_parts;
        else if (c == '=')
            m_isKey = false;
        else if (c == '{' || (c == '[' && !m_isKey))
            open(c == '{');
        else if (c == ']' || c == '}')
            close(c == '}');
        else if (c == ',' || c == '[' || (c == '\n' && m_levels.size() == 1))
            beginEntry();
    }

private:
    struct Level
    {
        int parts; // of the keys around it
        bool hasKeys;
    };
    static constexpr std::size_t moreThanAllowed = 1000; // to toml++, which will say so

    void open(bool hasKeys)
    {
        m_levels.push_back({m_parts, hasKeys});
        beginEntry();
    }
    void close(bool hasKeys)
    {
        if (m_levels.size() == 1 || m_levels.back().hasKeys != hasKeys)
            return; // the end of a header, or no TOML
        m_parts = m_levels.back().parts;
        m_isKey = false;
        m_levels.pop_back();
    }
    void beginEntry()
    {
        m_isKey = m_levels.back().hasKeys;
        m_parts = m_levels.back().parts + (m_isKey ? 1 : 0);
    }

    std::vector<Level> m_levels{{0, true}};
    int m_parts = 1;
    bool m_isKey = true;
};

} // namespace

int lineOfDeepKey(std::string_view toml)
{
    int line = 1;
    PartCount count;
    while (!toml.empty() && !count.isTooDeep()) {
        std::size_t size = 1;
        if (const auto marks = quotationMarks(toml); !marks.empty())
            size = endOfText(toml, marks);
        else if (toml.front() == '#')
            size = std::min(toml.find('\n'), toml.size());
        else
            count.read(toml.front());
        const auto read = toml.substr(0, size);
        toml.remove_prefix(size);
        line += static_cast<int>(std::count(read.begin(), read.end(), '\n'));
    }
    return count.parts() > maxKeyParts ? line : 0;
}
