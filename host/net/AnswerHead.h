#pragma once

#include <QByteArrayView>

#include <curl/curl.h>

#include <algorithm>
#include <array>

/**
 * Follows the head of an answer by the lines that libcurl hands on, and finds what it lets pass.
 *
 * libcurl takes a head's first line that begins with "HTTP/" for a status line, and 200 for the
 * status of one without a version, "HTTP/x 500"; of "HTTP/2 0" it makes an answer of status 0. When
 * the connection ends within the head, it takes the answer for a whole one. Of interim answers it
 * hands on the heads too, which are followed as the first ones.
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
        m_isFirstLine = beginsWithName(line);
        if (line.trimmed().isEmpty()) {
            m_isWhole = true;
        } else if (m_isFirstLine) {
            m_isWhole = false;
            m_status = statusOf(line);
            m_isHttp = m_isHttp && m_status >= leastStatus;
        }
        return m_isHttp && !isTooLarge();
    }

    /// Of an exchange that ended with libcurl's code and status: that code, or the one of what
    /// libcurl has let pass.
    CURLcode judge(CURLcode code, long status) const
    {
        if (!m_isHttp || (code == CURLE_OK && m_status != status))
            return CURLE_UNSUPPORTED_PROTOCOL; // as libcurl says of other first lines
        return code == CURLE_OK && !m_isWhole ? CURLE_PARTIAL_FILE : code;
    }

    bool isTooLarge() const { return m_bytes > maxBytes; }
    /// Whether the last head has ended.
    bool isWhole() const { return m_isWhole; }
    /// Whether the line that was taken last began a head.
    bool isFirstLine() const { return m_isFirstLine; }

private:
    static constexpr QByteArrayView name = "HTTP/";
    static constexpr int leastStatus = 100;

    static bool beginsWithName(QByteArrayView line)
    {
        return line.first(std::min(name.size(), line.size())).compare(name, Qt::CaseInsensitive) ==
               0;
    }

    /// Of "HTTP/1.1 200 OK", with a version that libcurl reads, it is 200; 0 if there is none.
    static int statusOf(QByteArrayView line)
    {
        constexpr std::array<QByteArrayView, 4> versions{"1.1", "1.0", "2", "2.0"};
        constexpr qsizetype statusDigits = 3;
        const auto space = line.indexOf(' ');
        if (space < 0)
            return 0;
        const auto version = line.first(space).sliced(name.size());
        const auto isSpace = [](char c) { return c == ' '; };
        const auto isEnd = [](char c) { return c == ' ' || c == '\r' || c == '\n'; };
        const auto *const begin = std::find_if_not(line.begin() + space, line.end(), isSpace);
        const QByteArrayView status(begin, std::find_if(begin, line.end(), isEnd));
        const bool hasVersion =
            std::find(versions.begin(), versions.end(), version) != versions.end();
        return hasVersion && status.size() == statusDigits ? status.toInt() : 0;
    }

    qsizetype m_bytes = 0;
    int m_status = 0; // of the last status line; 0 if it tells none
    bool m_isHttp = true;
    bool m_isWhole = false;
    bool m_isFirstLine = false;
};
