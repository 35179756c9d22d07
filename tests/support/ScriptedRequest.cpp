#include <support/ScriptedRequest.h>

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace support {

namespace {

constexpr std::size_t receiveBytes = 65'536;
const QByteArray headerEnd = "\r\n\r\n";

ScriptedRequest parseHeader(const QByteArray &header)
{
    ScriptedRequest request;
    const auto lines = header.split('\n');
    const auto words = lines.first().trimmed().split(' ');
    request.method = words.value(0);
    request.path = words.value(1);
    for (const auto &line : lines.mid(1)) {
        const auto colon = line.indexOf(':');
        if (colon > 0)
            request.fields.append({line.left(colon).toLower(), line.mid(colon + 1).trimmed()});
    }
    return request;
}

bool receive(int socket, QByteArray &received)
{
    std::array<char, receiveBytes> buffer;
    const auto size = ::recv(socket, buffer.data(), buffer.size(), 0);
    if (size <= 0)
        return false;
    received.append(buffer.data(), size);
    return true;
}

} // namespace

QByteArray ScriptedRequest::field(const QByteArray &lowerCaseName) const
{
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const auto &field) {
        return field.first == lowerCaseName;
    });
    return found == fields.end() ? QByteArray() : found->second;
}

bool ScriptedRequest::hasField(const QByteArray &lowerCaseName) const
{
    return std::any_of(fields.begin(), fields.end(),
                       [&](const auto &field) { return field.first == lowerCaseName; });
}

bool readRequest(int socket, QByteArray &received, ScriptedRequest &request)
{
    qsizetype end = -1;
    while ((end = received.indexOf(headerEnd)) < 0) {
        if (!receive(socket, received))
            return false;
    }
    request = parseHeader(received.left(end));
    received.remove(0, end + headerEnd.size());

    const auto length = request.field("content-length").toLongLong();
    while (received.size() < length) {
        if (!receive(socket, received))
            return false;
    }
    request.body = received.left(length);
    received.remove(0, length);
    return true;
}

} // namespace support
