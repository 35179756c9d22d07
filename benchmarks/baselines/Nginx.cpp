#include <baselines/Nginx.h>

#include <support/Loopback.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QStandardPaths>
#include <QTcpSocket>

#include <stdexcept>

namespace bench {

namespace {

constexpr int startTimeMs = 10'000;

/// As lean as its manual lets it be; the temporary folders are named because it makes them all.
constexpr auto configuration = R"(daemon off;
master_process off;
pid nginx.pid;
error_log stderr;
events {}
http {
    access_log off;
    client_body_temp_path body;
    proxy_temp_path proxy;
    fastcgi_temp_path fastcgi;
    scgi_temp_path scgi;
    uwsgi_temp_path uwsgi;
    keepalive_requests 1000000000;
    server {
        listen 127.0.0.1:%1;
        location / {
            return 200;
        }
    }
}
)";

QString program()
{
    const auto name = QStringLiteral("nginx");
    const auto found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin")})
                           : found;
}

bool accepts(int port)
{
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(port));
    return socket.waitForConnected();
}

} // namespace

Nginx::Nginx() : m_port(freePort())
{
    const auto nginx = program();
    if (nginx.isEmpty())
        throw std::runtime_error("there is no nginx: ./bench fetches it, and finds it then");
    QFile file(m_folder.filePath(QStringLiteral("nginx.conf")));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(QString::fromLatin1(configuration).arg(m_port).toLatin1()) < 0)
        throw std::runtime_error("nginx's configuration cannot be written");
    file.close();

    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(nginx, {QStringLiteral("-p"), m_folder.path(), QStringLiteral("-c"),
                            file.fileName(), QStringLiteral("-e"), QStringLiteral("stderr")});
    const QDeadlineTimer deadline(startTimeMs);
    bool isRunning = m_process.waitForStarted();
    while (isRunning && !accepts(m_port))
        isRunning = !m_process.waitForFinished(1) && !deadline.hasExpired();
    if (!isRunning)
        throw std::runtime_error("nginx does not start");
}

Nginx::~Nginx()
{
    m_process.terminate();
    m_process.waitForFinished();
}

} // namespace bench
