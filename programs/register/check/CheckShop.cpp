#include <register/check/CheckShop.h>

#include <common/UsageError.h>

#include <Config.h>
#include <Singleton.h>

#include <QFile>
#include <QImage>
#include <QRandomGenerator>

#include <algorithm>

namespace {

constexpr auto thereAd = "there.png";

QByteArray readAdvertisement()
{
    QFile file(QStringLiteral(":/check/advertisement.png"));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

/// Noise, which does not compress: a picture of 2 MB is a message of 3.
QImage largePicture()
{
    QImage picture(1000, 750, QImage::Format_RGB888);
    QRandomGenerator random(1);
    for (int row = 0; row < picture.height(); ++row)
        std::generate_n(picture.scanLine(row), 3 * picture.width(),
                        [&random] { return static_cast<uchar>(random.bounded(256)); });
    return picture;
}

} // namespace

CheckShop::CheckShop()
    : m_advertisement(readAdvertisement())
    , m_goods(Goods::fromFile(QStringLiteral(":/check/goods.toml")))
    , m_adServer(0, HttpServerOptions())
{
    const auto file = m_folder.filePath(QStringLiteral("picture.png"));
    if (!largePicture().save(file))
        throw UsageError(QStringLiteral("--check: %1 cannot be written: is there room, and a right "
                                        "to?")
                             .arg(file));
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
    const auto ad = QStringLiteral("http://127.0.0.1:%1/%2").arg(m_adServer.port());
    set("View.ADTimetable.check-1:index", 1);
    set("View.ADTimetable.check-1:url", ad.arg(QString::fromLatin1(thereAd)));
    set("View.ADTimetable.check-1:time", adSeconds);
    set("View.ADTimetable.check-2:index", 2);
    set("View.ADTimetable.check-2:url", ad.arg(QString::fromLatin1(missingAd)));
    set("View.ADTimetable.check-2:time", adSeconds);
}

void CheckShop::answer(const RequestHeader &header)
{
    ResponseHeader answer;
    if (header.path() != u'/' + QString::fromLatin1(thereAd)) {
        answer.setStatusLine(404, QStringLiteral("Not Found"), 1, 1);
        m_adServer.sendResponse(answer, {});
        return;
    }
    answer.setContentType(QStringLiteral("image/png"));
    m_adServer.sendResponse(answer, m_advertisement);
}
