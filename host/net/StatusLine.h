#pragma once

#include <QByteArrayView>

#include <algorithm>

/**
 * Whether a line of an answer's head passes for a status line, as "HTTP/1.1 200 OK" is one, but
 * does not tell a status of three digits, 100 at the least.
 *
 * libcurl takes each line that begins with "HTTP/" for a status line, and 200 for the status of one
 * without a version, "HTTP/x 500"; of "HTTP/2 0" it makes an answer of status 0. Whoever asks by it
 * has to give such an answer up.
 *
 * Thread: any. Errors: never throws.
 */
inline bool isFalseStatusLine(QByteArrayView line)
{
    constexpr QByteArrayView name = "HTTP/";
    constexpr auto statusDigits = 3;
    if (line.first(std::min(name.size(), line.size())).compare(name, Qt::CaseInsensitive) != 0)
        return false;
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    const auto version = line.sliced(name.size());
    const auto status = line.sliced(line.indexOf(' ') + 1).trimmed();
    const auto statusEnd = std::find_if_not(status.begin(), status.end(), isDigit);
    return version.isEmpty() || !isDigit(version.front()) ||
           statusEnd - status.begin() != statusDigits || status.front() == '0';
}
