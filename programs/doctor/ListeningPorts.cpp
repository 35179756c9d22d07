#include <doctor/ListeningPorts.h>

#include <QDir>
#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include <unistd.h>

namespace doctor {

namespace {

constexpr auto listening = "0A"; // the kernel's TCP_LISTEN
const QByteArray socketStart = "socket:[";
constexpr qint64 maxFileBytes = 8'388'608;

/// The columns of a line that are used.
enum Column { LocalAddress = 1, State = 3, Inode = 9 };

QByteArray contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.read(maxFileBytes) : QByteArray();
}

/// The kernel prints an address as 32-bit numbers in the machine's order.
QHostAddress toAddress(const QByteArray &hex)
{
    QByteArray bytes = QByteArray::fromHex(hex);
    for (qsizetype at = 0; at + 4 <= bytes.size(); at += 4) {
        const auto word = qFromBigEndian<quint32>(bytes.constData() + at);
        qToUnaligned(word, bytes.data() + at);
    }
    if (bytes.size() == 4)
        return QHostAddress(qFromBigEndian<quint32>(bytes.constData()));
    if (bytes.size() == 16)
        return QHostAddress(reinterpret_cast<const quint8 *>(bytes.constData()));
    return {};
}

bool isWildcard(const QHostAddress &address)
{
    return address == QHostAddress(QHostAddress::AnyIPv4) ||
           address == QHostAddress(QHostAddress::AnyIPv6);
}

/// The inodes of the sockets that a process has open.
QList<quint64> socketsOf(const QString &processFolder)
{
    QList<quint64> inodes;
    const QDir descriptors(processFolder + QStringLiteral("/fd"));
    const auto names =
        descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const auto &name : names) {
        // Not symLinkTarget(), which makes the text a path.
        std::array<char, 64> target{};
        const auto link = QFile::encodeName(descriptors.filePath(name));
        const auto size = readlink(link.constData(), target.data(), target.size());
        const QByteArray text(target.data(), std::max<qsizetype>(size, 0));
        if (text.startsWith(socketStart) && text.endsWith(']'))
            inodes.append(text.mid(socketStart.size()).chopped(1).toULongLong());
    }
    return inodes;
}

} // namespace

QList<ListeningPort> parseListeningPorts(const QByteArray &text)
{
    QList<ListeningPort> ports;
    const auto lines = text.split('\n');
    for (const auto &line : lines.mid(1)) { // the first holds the titles
        const auto columns = line.simplified().split(' ');
        if (columns.size() <= Inode || columns[State] != listening)
            continue;
        const auto local = columns[LocalAddress].split(':');
        ports.append({toAddress(local.value(0)), local.value(1).toInt(nullptr, 16),
                      columns[Inode].toULongLong()});
    }
    return ports;
}

ListeningPorts::ListeningPorts(QString proc) : m_proc(std::move(proc))
{
    read(QStringLiteral("tcp"));
    read(QStringLiteral("tcp6"));
    const auto names = QDir(m_proc).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const auto &name : names) {
        bool isProcess = false;
        const auto pid = name.toLongLong(&isProcess);
        const auto sockets = isProcess ? socketsOf(m_proc + u'/' + name) : QList<quint64>();
        for (const auto inode : sockets)
            m_holders.insert(inode, pid);
    }
}

void ListeningPorts::read(const QString &fileName)
{
    m_ports += parseListeningPorts(contentOf(m_proc + QStringLiteral("/net/") + fileName));
}

QList<ListeningPort> ListeningPorts::inTheWayOf(const QHostAddress &address, int port) const
{
    QList<ListeningPort> found;
    std::copy_if(
        m_ports.begin(), m_ports.end(), std::back_inserter(found), [&](const ListeningPort &other) {
            return other.port == port && (isWildcard(address) || isWildcard(other.address) ||
                                          other.address.isEqual(address));
        });
    return found;
}

PortOwner ListeningPorts::ownerOf(const ListeningPort &port) const
{
    const auto pid = m_holders.value(port.inode);
    if (pid == 0)
        return {};
    const auto folder = QStringLiteral("%1/%2").arg(m_proc).arg(pid);
    return {pid, QString::fromUtf8(contentOf(folder + QStringLiteral("/comm"))).trimmed(),
            QString::fromUtf8(contentOf(folder + QStringLiteral("/maps")))};
}

QString toText(const ListeningPorts &ports)
{
    QString text;
    for (const auto &port : ports.all()) {
        const auto owner = ports.ownerOf(port);
        text += QStringLiteral("%1 port %2  %3\n")
                    .arg(port.address.toString(), QString::number(port.port),
                         owner.pid == 0 ? QStringLiteral("?")
                                        : QStringLiteral("%1 (%2)").arg(owner.name).arg(owner.pid));
    }
    return text;
}

} // namespace doctor
