#pragma once

#include <QByteArray>
#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QString>

namespace doctor {

/// A TCP port that some program listens on. A value type.
struct ListeningPort
{
    QHostAddress address;
    int port = 0;
    quint64 inode = 0; ///< of the socket
};

/// Who holds a socket. A value type.
struct PortOwner
{
    qint64 pid = 0; ///< 0 if no process that this user may look into holds it
    QString name;
    QString libraries; ///< the files that are mapped into the process, one a line
};

/**
 * The ports that are listened on, and by whom, as the kernel tells it in /proc.
 *
 * Owner: who asks. Thread: any one at a time. Errors: what cannot be read is left out; processes of
 * other users show their sockets to root only.
 */
class ListeningPorts
{
public:
    /// Reads the folder `proc`, which is laid out as /proc.
    explicit ListeningPorts(QString proc = QStringLiteral("/proc"));

    const QList<ListeningPort> &all() const { return m_ports; }
    /// Those that keep `address` and `port` from being opened.
    QList<ListeningPort> inTheWayOf(const QHostAddress &address, int port) const;
    PortOwner ownerOf(const ListeningPort &port) const;

private:
    void read(const QString &fileName);

    const QString m_proc;
    QList<ListeningPort> m_ports;
    QHash<quint64, qint64> m_holders; // process ids by inode
};

/// The listening sockets of a file like /proc/net/tcp or /proc/net/tcp6.
QList<ListeningPort> parseListeningPorts(const QByteArray &text);

/// A line for each port, with address, port, process id and name; for people.
QString toText(const ListeningPorts &ports);

} // namespace doctor
