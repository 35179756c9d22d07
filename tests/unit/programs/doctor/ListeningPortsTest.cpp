#include <doctor/ListeningPorts.h>

#include <support/PrintQt.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace doctor;

namespace {

const QByteArray titles = "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when "
                          "retrnsmt   uid  timeout inode\n";

QByteArray line(const QByteArray &address, const QByteArray &state, const QByteArray &inode)
{
    return "   0: " + address + " 00000000:0000 " + state +
           " 00000000:00000000 00:00000000 00000000  1000        0 " + inode + " 1 0 100 0\n";
}

ListeningPort onlyOne(const QByteArray &text)
{
    const auto ports = parseListeningPorts(titles + text);
    EXPECT_EQ(ports.size(), 1);
    return ports.value(0);
}

} // namespace

TEST(ListeningPorts, Are_read_with_address_port_and_inode)
{
    const auto port = onlyOne(line("0100007F:94C1", "0A", "4711"));
    EXPECT_EQ(port.address, QHostAddress("127.0.0.1"));
    EXPECT_EQ(port.port, 38081);
    EXPECT_EQ(port.inode, 4711u);
    EXPECT_EQ(onlyOne(line("00000000000000000000000001000000:0050", "0A", "1")).address,
              QHostAddress("::1"));
    EXPECT_EQ(onlyOne(line("0000000000000000FFFF00000100007F:0050", "0A", "1")).address,
              QHostAddress("::ffff:127.0.0.1"));
}

TEST(ListeningPorts, Are_not_connections_or_broken_lines)
{
    EXPECT_TRUE(parseListeningPorts(titles + line("0100007F:94C1", "01", "1")).isEmpty());
    EXPECT_TRUE(parseListeningPorts(titles + "0: 0100007F:94C1\n\n").isEmpty());
    EXPECT_TRUE(parseListeningPorts({}).isEmpty());
}

TEST(ListeningPorts, Know_who_holds_them)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    const ListeningPorts ports;
    const auto found = ports.inTheWayOf(QHostAddress::LocalHost, server.serverPort());
    ASSERT_EQ(found.size(), 1);
    const auto owner = ports.ownerOf(found.first());
    EXPECT_EQ(owner.pid, QCoreApplication::applicationPid());
    EXPECT_EQ(owner.name, "doctor_tests");
    EXPECT_TRUE(owner.libraries.contains("/doctor_tests\n"));
    EXPECT_TRUE(toText(ports).contains(
        QString("127.0.0.1 port %1  doctor_tests (%2)\n").arg(server.serverPort()).arg(owner.pid)));
}

TEST(ListeningPorts, Are_in_the_way_on_the_same_address_or_on_all)
{
    QTemporaryDir proc;
    ASSERT_TRUE(QDir(proc.path()).mkpath("net"));
    QFile file(proc.filePath("net/tcp"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(titles + line("0100007F:94C1", "0A", "1") + line("00000000:94C2", "0A", "2"));
    file.close();
    const ListeningPorts ports(proc.path());
    const auto inTheWay = [&](const char *address, int port) {
        return ports.inTheWayOf(QHostAddress(address), port).size();
    };
    EXPECT_EQ(inTheWay("127.0.0.1", 38081), 1);
    EXPECT_EQ(inTheWay("0.0.0.0", 38081), 1);
    EXPECT_EQ(inTheWay("127.0.0.2", 38081), 0);
    EXPECT_EQ(inTheWay("127.0.0.2", 38082), 1);
    EXPECT_EQ(inTheWay("127.0.0.1", 38083), 0);
    EXPECT_EQ(ports.ownerOf(ports.all().first()).pid, 0) << "nobody shows it";
    EXPECT_TRUE(toText(ports).startsWith("127.0.0.1 port 38081  ?\n"));
}

TEST(ListeningPorts, Are_none_where_nothing_can_be_read)
{
    EXPECT_TRUE(ListeningPorts("/none").all().isEmpty());
}
