#include <register/check/CheckShop.h>

#include <common/UsageError.h>

#include <Config.h>
#include <Singleton.h>

#include <QFile>

namespace {

QByteArray readPicture()
{
    QFile file(QStringLiteral(":/check/advertisement.png"));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

} // namespace

CheckShop::CheckShop()
    : m_picture(readPicture())
    , m_goods(Goods::fromFile(QStringLiteral(":/check/goods.toml")))
    , m_adServer(0, HttpServerOptions())
{
    QFile picture(m_folder.filePath(QStringLiteral("picture.png")));
    if (!picture.open(QIODevice::WriteOnly) || picture.write(m_picture) < 0 || !picture.flush())
        throw UsageError(
            QStringLiteral("--check: %1: %2.").arg(picture.fileName(), picture.errorString()));
    if (!m_adServer.isListening())
        throw UsageError(QStringLiteral("--check: the advertisements cannot be served: %1.")
                             .arg(m_adServer.errorString()));
    QObject::connect(&m_adServer, &HttpServer::requestReceived, &m_adServer,
                     [this](const RequestHeader &header) { answer(header); });
}

void CheckShop::configure(const QString &server, int pluginPort) const
{
    auto &config = Singleton<Config>::instance();
    const auto set = [&config](const char *key, const QVariant &value) {
        config.setValue(QString::fromLatin1(key), value);
    };
    set("ViewConnector:server", server);
    set("ViewConnector:port", pluginPort);
    set("ViewConnector:interval", 20);
    set("ViewConnector.Ads:url", QString());
    set("View.Style:showImages", true);
    set("View.Logic:showQrCode", true);
    const auto ad = QStringLiteral("http://127.0.0.1:%1/%2.png").arg(m_adServer.port());
    set("View.ADTimetable.check-1:index", 1);
    set("View.ADTimetable.check-1:url", ad.arg(QStringLiteral("there")));
    set("View.ADTimetable.check-1:time", adSeconds);
    set("View.ADTimetable.check-2:index", 2);
    set("View.ADTimetable.check-2:url", ad.arg(QStringLiteral("missing")));
    set("View.ADTimetable.check-2:time", adSeconds);
}

void CheckShop::answer(const RequestHeader &header)
{
    ResponseHeader answer;
    if (header.path() != QStringLiteral("/there.png")) {
        answer.setStatusLine(404, QStringLiteral("Not Found"), 1, 1);
        m_adServer.sendResponse(answer, {});
        return;
    }
    answer.setContentType(QStringLiteral("image/png"));
    m_adServer.sendResponse(answer, m_picture);
}
