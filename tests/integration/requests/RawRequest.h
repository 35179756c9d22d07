#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Bytes as a client may send them, and what may come of them.
struct RawRequest
{
    const char *name;
    std::string bytes;
    std::vector<int> allowed; ///< statuses; `closed` for none, 200 for a request that is delivered
};

inline constexpr int closed = 0;

/// The tables; each row is a test of its own.
std::vector<RawRequest> malformedRequestLines();
std::vector<RawRequest> malformedFields();
std::vector<RawRequest> ambiguousFraming();
std::vector<RawRequest> malformedChunks();
std::vector<RawRequest> oddRequests();

/// A request with this line; one with this field, or these, besides its Host; one with a body too.
inline std::string line(std::string_view text)
{
    return std::string(text) + "\r\nHost: localhost\r\n\r\n";
}

inline std::string field(std::string_view text, std::string_view body = {})
{
    return "POST / HTTP/1.1\r\nHost: localhost\r\n" + std::string(text) + "\r\n\r\n" +
           std::string(body);
}

/// A request whose only fields are these.
inline std::string only(std::string_view fields, std::string_view version = "HTTP/1.1")
{
    return "GET / " + std::string(version) + "\r\n" + std::string(fields) + "\r\n\r\n";
}

inline std::string chunks(std::string_view body)
{
    return field("Transfer-Encoding: chunked", body);
}
