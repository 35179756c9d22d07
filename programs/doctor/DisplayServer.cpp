#include <doctor/DisplayServer.h>

#include <QHostAddress>
#include <QNetworkInterface>

namespace doctor {

namespace {

constexpr int httpPort = 80;
constexpr int httpsPort = 443;

} // namespace

QUrl displayServer(const QString &setting)
{
    return {setting.isEmpty() ? QStringLiteral("http://127.0.0.1:38080") : setting};
}

int portOf(const QUrl &url)
{
    if (url.scheme() == u"http")
        return url.port(httpPort);
    return url.scheme() == u"https" ? url.port(httpsPort) : -1;
}

bool isThisMachine(const QUrl &url)
{
    if (url.host() == u"localhost")
        return true;
    const QHostAddress address(url.host());
    return address.isLoopback() || QNetworkInterface::allAddresses().contains(address);
}

} // namespace doctor
