#include <display/MultipartReader.h>

namespace {

constexpr qsizetype maxPartSize = 8'388'608; // as large as a picture of the register may be
constexpr qsizetype maxHeaderSize = 8'192;
constexpr QByteArrayView headerEnd = "\r\n\r\n";

/// The value of a field among lines of fields; empty if there is none.
QByteArray fieldOf(const QByteArray &lines, const QByteArray &lowerCaseName)
{
    for (const auto &line : lines.split('\n')) {
        const auto colon = line.indexOf(':');
        if (colon > 0 && line.left(colon).trimmed().toLower() == lowerCaseName)
            return line.mid(colon + 1).trimmed();
    }
    return {};
}

QByteArray boundaryOf(const QByteArray &contentType)
{
    const QByteArray parameter = "boundary=";
    const auto start = contentType.toLower().indexOf(parameter);
    if (!contentType.toLower().startsWith("multipart/") || start < 0)
        return {};
    QByteArray value = contentType.mid(start + parameter.size());
    value.truncate(value.contains(';') ? value.indexOf(';') : value.size());
    value = value.trimmed();
    return value.startsWith('"') && value.endsWith('"') ? value.mid(1, value.size() - 2) : value;
}

} // namespace

MultipartReader::MultipartReader(const QByteArray &contentType)
    : m_delimiter("--" + boundaryOf(contentType)), m_failed(m_delimiter.size() <= 2)
{
}

QList<QByteArray> MultipartReader::feed(const QByteArray &bytes)
{
    QList<QByteArray> parts;
    if (m_failed)
        return parts;
    m_received += bytes;
    while (m_expected >= 0 || readHeader()) {
        if (m_received.size() < m_expected)
            break;
        parts.append(m_received.left(m_expected));
        m_received.remove(0, m_expected);
        m_expected = -1;
    }
    return parts;
}

/// Whether the header of a part is there; its size is then known.
bool MultipartReader::readHeader()
{
    const auto end = m_received.indexOf(headerEnd);
    if (end < 0) {
        m_failed = m_received.size() > maxHeaderSize;
        return false;
    }
    const auto header = m_received.left(end).trimmed(); // the line break after the part before
    bool isNumber = false;
    const auto size = fieldOf(header, "content-length").toLongLong(&isNumber);
    m_failed =
        !header.startsWith(m_delimiter + "\r\n") || !isNumber || size < 0 || size > maxPartSize;
    if (m_failed)
        return false;
    m_received.remove(0, end + headerEnd.size());
    m_expected = size;
    return true;
}
