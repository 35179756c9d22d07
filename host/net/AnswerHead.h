#pragma once

#include <QByteArrayView>

#include <algorithm>
#include <array>

/**
 * Follows the head of an answer by the lines that libcurl hands on, and finds what it lets pass.
 *
 * libcurl takes each line that begins with "HTTP/" for a status line, and 200 for the status of one
 * without a version, "HTTP/x 500"; of "HTTP/2 0" it makes an answer of status 0. When the
 * connection ends within the head, it takes the answer for a whole one. Of interim answers it hands
 * on the heads too, which are followed as the first ones.
 *
 * Owner: whoever asks, one for each request. Thread: that of the request. Errors: none are thrown.
 */
class AnswerHead
{
public:
    static constexpr qsizetype maxBytes = 65'536; ///< of all heads

    /// Takes the next line. Returns false once the answer has to be given up.
    bool take(QByteArrayView line)
    {
        m_bytes += line.size();
        if (line.trimmed().isEmpty()) {
            m_isWhole = true;
        } else if (beginsWithName(line)) {
            m_isWhole = false;
            m_isHttp = m_isHttp && tellsStatus(line);
        }
        return m_isHttp && !isTooLarge();
    }

    bool isHttp() const { return m_isHttp; }
    bool isTooLarge() const { return m_bytes > maxBytes; }
    /// Whether the last head has ended.
    bool isWhole() const { return m_isWhole; }

private:
    static constexpr QByteArrayView name = "HTTP/";

    static bool beginsWithName(QByteArrayView line)
    {
        return line.first(std::min(name.size(), line.size())).compare(name, Qt::CaseInsensitive) ==
               0;
    }

    /// Three digits, 100 at the least, after a version that libcurl reads: "HTTP/1.1 200 OK".
    static bool tellsStatus(QByteArrayView line)
    {
        constexpr std::array<QByteArrayView, 4> versions{"1.1", "1.0", "2", "2.0"};
        constexpr qsizetype statusDigits = 3;
        const auto space = line.indexOf(' ');
        if (space < 0)
            return false;
        const auto version = line.first(space).sliced(name.size());
        const auto status = line.sliced(space).trimmed();
        const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
        const auto digits =
            std::find_if_not(status.begin(), status.end(), isDigit) - status.begin();
        return std::find(versions.begin(), versions.end(), version) != versions.end() &&
               digits == statusDigits && status.front() != '0';
    }

    qsizetype m_bytes = 0;
    bool m_isHttp = true;
    bool m_isWhole = false;
};
