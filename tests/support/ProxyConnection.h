#pragma once

#include <openssl/ssl.h>

#include <QByteArray>

#include <memory>

namespace support {

/// One end of a FaultProxy: a socket, with TLS on it or without. Whose the socket is, is its
/// creator's affair. Thread: that of the connection.
class ProxyConnection
{
public:
    /// Presents the certificate of `tls` when its peer connects; no TLS if it is null.
    ProxyConnection(int socket, SSL_CTX *tls);

    /// Waits for the TLS handshake; true without TLS.
    bool accept();
    /// Waits for some bytes; none when the peer has left.
    QByteArray read();
    /// Bytes that were read off the socket already and wait for `read`.
    bool hasPending() const { return m_tls && SSL_pending(m_tls.get()) > 0; }
    /// False when the peer has left.
    bool write(const QByteArray &bytes);

    int socket() const { return m_socket; }

private:
    int m_socket;
    std::unique_ptr<SSL, decltype(&SSL_free)> m_tls;
};

} // namespace support
