#include <HttpRequestHead.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using Fields = std::vector<std::pair<std::string, std::string>>;

/// A head in one buffer, split as the library does it: what ended a part is now a NUL.
class SplitHead
{
public:
    explicit SplitHead(const Fields &fields, const std::string &version = "HTTP/1.1")
        : m_buffer(bufferOf(fields, version))
        , head({m_buffer.data(), 4}, m_buffer.data() + 5, "/path",
               {m_buffer.data() + 11, version.size()}, m_buffer.size())
    {
        const auto *at = m_buffer.data() + 11 + version.size() + lineEnd.size();
        for (const auto &[name, value] : fields) {
            const auto *valueAt = at + name.size() + 2;
            head.addField({at, name.size()}, {valueAt, value.size()});
            at = valueAt + value.size() + lineEnd.size();
        }
    }

    Q_DISABLE_COPY_MOVE(SplitHead)

private:
    static std::string bufferOf(const Fields &fields, const std::string &version)
    {
        auto buffer = std::string("POST") + '\0' + "/path" + '\0' + version + lineEnd;
        for (const auto &[name, value] : fields)
            buffer += name + '\0' + ' ' + value + lineEnd;
        return buffer + lineEnd;
    }

    static inline const std::string lineEnd = std::string(2, '\0');
    const std::string m_buffer;

public:
    HttpRequestHead head; // of the buffer
};

const std::string alphanumerics = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

bool contains(const std::string &all, const std::string &part)
{
    return all.find(part) != std::string::npos;
}

} // namespace

TEST(HttpRequestHead, Without_fault_is_one_whose_lines_follow_each_other)
{
    EXPECT_EQ(SplitHead(Fields{{"Host", "localhost"}, {"X", ""}, {"Y", "a  "}}).head.fault(),
              QString());
    EXPECT_EQ(SplitHead(Fields{}, "HTTP/1.0").head.fault(), QString());
}

TEST(HttpRequestHead, Has_its_values_without_the_blanks_behind)
{
    const SplitHead split(Fields{{"Host", "localhost \t "}});
    ASSERT_EQ(split.head.fields().size(), 1U);
    EXPECT_EQ(split.head.fields().front().value, "localhost");
}

TEST(HttpRequestHead, Is_refused_when_a_field_lies_elsewhere_or_holds_a_NUL)
{
    const std::string elsewhere = "X-Folded";
    SplitHead folded(Fields{{"Host", "localhost"}});
    folded.head.addField(elsewhere, elsewhere);
    EXPECT_NE(folded.head.fault(), QString());

    SplitHead holding(Fields{{"Host", std::string("local\0host", 10)}});
    EXPECT_NE(holding.head.fault(), QString());
}

TEST(HttpRequestHead, Is_refused_for_what_could_be_read_in_two_ways)
{
    const Fields ambiguous[] = {
        {},
        {{"Host", "a"}, {"Host", "a"}},
        {{"Host", "a@b"}},
        {{"Host", "a"}, {"Content-Length", "1"}, {"content-length", "1"}},
        {{"Host", "a"}, {"Content-Length", "1"}, {"Transfer-Encoding", "chunked"}},
        {{"Host", "a"}, {"Transfer-Encoding", "gzip, chunked"}},
        {{"Host", "a"}, {"Transfer-Encoding", "chunked "}},
        {{"Host", "a"}, {"X ", "a"}},
        {{"Host", "a"}, {"", "a"}},
        {{"Host", "a"}, {"X", "\x01"}},
    };
    for (const auto &fields : ambiguous) {
        SCOPED_TRACE(fields.empty() ? "none" : fields.back().first);
        EXPECT_NE(SplitHead(fields).head.fault(), QString());
    }
    EXPECT_NE(SplitHead(Fields{{"Transfer-Encoding", "chunked"}}, "HTTP/1.0").head.fault(),
              QString());
}

TEST(HttpRequestHead, Takes_exactly_the_characters_of_a_token_in_the_name_of_a_field)
{
    for (int code = 0; code < 256; ++code) {
        const std::string c(1, static_cast<char>(code));
        const auto fault = SplitHead(Fields{{"Host", "a"}, {"X" + c + "X", "a"}}).head.fault();
        EXPECT_EQ(fault.isNull(), contains(alphanumerics + "!#$%&'*+-.^_`|~", c)) << code;
    }
}

TEST(HttpRequestHead, Takes_exactly_the_characters_of_an_authority_in_a_host)
{
    for (int code = 0; code < 256; ++code) {
        const std::string c(1, static_cast<char>(code));
        const auto fault = SplitHead(Fields{{"Host", "a" + c + "a"}}).head.fault();
        EXPECT_EQ(fault.isNull(), contains(alphanumerics + "-._~%!$&'()*+,;=:[]", c)) << code;
    }
}

TEST(HttpRequestHead, Takes_no_control_characters_but_the_tabulator_in_a_value)
{
    for (int code = 0; code < 256; ++code) {
        const std::string c(1, static_cast<char>(code));
        const auto fault = SplitHead(Fields{{"Host", "a"}, {"X", "a" + c + "a"}}).head.fault();
        EXPECT_EQ(fault.isNull(), code == '\t' || (code >= ' ' && code != 0x7f)) << code;
    }
}
