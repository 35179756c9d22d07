#pragma once

#include <QByteArray>

#include <string>

namespace bench {

/// The physical limit: one request, prepared in advance, written to a kept connection, and the
/// answer read. Blocks the caller. The constructor throws std::system_error without a connection.
class RawPost
{
public:
    RawPost(int port, const std::string &path, const QByteArray &body);
    ~RawPost();
    RawPost(const RawPost &) = delete;
    RawPost &operator=(const RawPost &) = delete;

    void operator()() const;

private:
    int m_socket;
    std::string m_request;
};

} // namespace bench
