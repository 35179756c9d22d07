#include "HttpRequestHead.h"

#include <microhttpd.h>

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view blanks = " \t";
constexpr std::size_t lineEndSize = 2;     // CR LF
constexpr std::size_t usualFieldCount = 8; // of a display's requests

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isAlphanumeric(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// A name in the sense of HTTP, as methods and fields have.
bool isToken(std::string_view text)
{
    constexpr std::string_view others = "!#$%&'*+-.^_`|~";
    return !text.empty() && std::all_of(text.begin(), text.end(), [&](char c) {
        return isAlphanumeric(c) || others.find(c) != std::string_view::npos;
    });
}

bool isHost(std::string_view text)
{
    constexpr std::string_view others = "-._~%!$&'()*+,;=:[]";
    return std::all_of(text.begin(), text.end(), [&](char c) {
        return isAlphanumeric(c) || others.find(c) != std::string_view::npos;
    });
}

bool isControl(char c)
{
    const auto code = static_cast<unsigned char>(c);
    return (code < ' ' && c != '\t') || code == 0x7f;
}

bool equalsWithoutCase(std::string_view left, std::string_view right)
{
    return left.size() == right.size() &&
           QLatin1String(left.data(), static_cast<int>(left.size()))
                   .compare(QLatin1String(right.data(), static_cast<int>(right.size())),
                            Qt::CaseInsensitive) == 0;
}

std::string_view withoutTrailingBlanks(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

MHD_Result addFieldTo(void *head, MHD_ValueKind, const char *name, std::size_t nameSize,
                      const char *value, std::size_t valueSize)
{
    static_cast<HttpRequestHead *>(head)->addField({name, nameSize}, {value, valueSize});
    return MHD_YES;
}

} // namespace

HttpRequestHead::HttpRequestHead(std::string_view method, const char *targetAt, QByteArray target,
                                 std::string_view version, std::size_t size)
    : m_method(method)
    , m_targetAt(targetAt)
    , m_target(std::move(target))
    , m_version(version)
    , m_size(size)
    , m_end(version.data() + version.size() + lineEndSize)
    , m_isContiguous(m_targetAt == method.data() + method.size() + 1 &&
                     m_version.data() == m_targetAt + m_target.size() + 1)
{
    m_fields.reserve(usualFieldCount);
}

HttpRequestHead HttpRequestHead::of(MHD_Connection *connection, std::string_view method,
                                    const char *targetAt, QByteArray target,
                                    std::string_view version)
{
    const auto *info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_REQUEST_HEADER_SIZE);
    HttpRequestHead head(method, targetAt, std::move(target), version, info->header_size);
    MHD_get_connection_values_n(connection, MHD_HEADER_KIND, &addFieldTo, &head);
    return head;
}

/// Between name and value there is the colon, now a NUL, and blanks; anything else, or another
/// place than the next in the buffer, comes of a line that the library has mended.
void HttpRequestHead::addField(std::string_view name, std::string_view value)
{
    const auto *const nameEnd = name.data() + name.size();
    const bool follows = name.data() == m_end && value.data() > nameEnd &&
                         std::all_of(nameEnd + 1, value.data(), &isBlank);
    m_isContiguous = m_isContiguous && follows;
    m_end = value.data() + value.size() + lineEndSize;
    // An encoding with blanks behind it is one that the library does not know: it would read no
    // chunks.
    const bool isEncoding = equalsWithoutCase(name, "Transfer-Encoding");
    m_fields.push_back({name, isEncoding ? value : withoutTrailingBlanks(value)});
}

QString HttpRequestHead::fault() const
{
    if (!isContiguous())
        return QStringLiteral("строки заголовка разделены неверно");
    if (!isToken(m_method))
        return QStringLiteral("неверный метод");
    if (hasForbiddenCharacters())
        return QStringLiteral("недопустимые символы в заголовке");
    if (!std::all_of(m_fields.begin(), m_fields.end(),
                     [](const Field &field) { return isToken(field.name); }))
        return QStringLiteral("неверное имя поля заголовка");
    const auto framing = framingFault();
    return framing.isNull() ? hostFault() : framing;
}

bool HttpRequestHead::isContiguous() const
{
    return m_isContiguous && m_end + lineEndSize == m_method.data() + m_size;
}

bool HttpRequestHead::hasForbiddenCharacters() const
{
    return std::any_of(m_target.begin(), m_target.end(),
                       [](char c) { return isControl(c) || isBlank(c); }) ||
           std::any_of(m_fields.begin(), m_fields.end(), [](const Field &field) {
               return std::any_of(field.value.begin(), field.value.end(), &isControl);
           });
}

/// The library itself refuses a single length that is no number.
QString HttpRequestHead::framingFault() const
{
    const auto lengths = valuesOf("Content-Length");
    const auto encodings = valuesOf("Transfer-Encoding");
    if (lengths.size() + encodings.size() > 1)
        return QStringLiteral("длина тела указана не один раз");
    if (encodings.empty())
        return {};
    if (m_version == "HTTP/1.0" || !equalsWithoutCase(encodings.front(), "chunked"))
        return QStringLiteral("недопустимое поле Transfer-Encoding");
    return {};
}

QString HttpRequestHead::hostFault() const
{
    const auto hosts = valuesOf("Host");
    const bool isOptional = m_version == "HTTP/1.0";
    if (hosts.empty() && isOptional)
        return {};
    if (hosts.size() != 1 || !isHost(hosts.front()))
        return QStringLiteral("недопустимое поле Host");
    return {};
}

std::vector<std::string_view> HttpRequestHead::valuesOf(std::string_view name) const
{
    std::vector<std::string_view> values;
    for (const auto &field : m_fields) {
        if (equalsWithoutCase(field.name, name))
            values.push_back(field.value);
    }
    return values;
}
