#include <support/ProxyConnection.h>

#include <sys/socket.h>

#include <cstddef>

namespace support {

namespace {

constexpr int blockBytes = 65'536;

} // namespace

ProxyConnection::ProxyConnection(int socket, SSL_CTX *tls)
    : m_socket(socket), m_tls(tls == nullptr ? nullptr : SSL_new(tls), SSL_free)
{
}

bool ProxyConnection::accept()
{
    return !m_tls || (SSL_set_fd(m_tls.get(), m_socket) == 1 && SSL_accept(m_tls.get()) == 1);
}

QByteArray ProxyConnection::read()
{
    QByteArray block(blockBytes, Qt::Uninitialized);
    const auto size = m_tls ? SSL_read(m_tls.get(), block.data(), blockBytes)
                            : ::recv(m_socket, block.data(), blockBytes, 0);
    block.resize(size > 0 ? static_cast<qsizetype>(size) : 0);
    return block;
}

bool ProxyConnection::write(const QByteArray &bytes)
{
    for (qsizetype sent = 0; sent < bytes.size();) {
        const auto left = bytes.size() - sent;
        const auto size =
            m_tls ? SSL_write(m_tls.get(), bytes.constData() + sent, static_cast<int>(left))
                  : ::send(m_socket, bytes.constData() + sent, static_cast<std::size_t>(left),
                           MSG_NOSIGNAL);
        if (size <= 0)
            return false;
        sent += size;
    }
    return true;
}

} // namespace support
