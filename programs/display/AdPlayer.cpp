#include <display/AdPlayer.h>

#include <QFileInfo>
#include <QMimeDatabase>
#include <QUrlQuery>

#include <algorithm>

namespace {

using namespace std::chrono_literals;

constexpr qsizetype maxAddressCharacters = 2048; // Qt takes minutes for some of a megabyte
constexpr auto maxTime = 24h;                    // a timer takes no more than some weeks
constexpr qint64 maxContentBytes = 67'108'864;   // 64 MiB, a film of a minute
/// What Qt's network thread may read ahead: more than the limit, so that going beyond that is seen.
constexpr qint64 readAheadBytes = 2 * maxContentBytes;

bool isStream(const QUrl &url)
{
    return url.scheme() == u"ads";
}

/// ads://host:port?stream=N&key=K is fetched as http://host:port/streams/N?key=K.
QUrl streamAddress(const QUrl &url)
{
    const QUrlQuery query(url);
    QUrlQuery key;
    key.addQueryItem(QStringLiteral("key"), query.queryItemValue(QStringLiteral("key")));
    QUrl address = url;
    address.setScheme(QStringLiteral("http"));
    address.setPath(QStringLiteral("/streams/") + query.queryItemValue(QStringLiteral("stream")));
    address.setQuery(key);
    return address;
}

/// As a picture or a film; of no kind if it is neither.
AdContent recognise(const QByteArray &bytes)
{
    using Kind = AdContent::Kind;
    const auto type = QMimeDatabase().mimeTypeForData(bytes).name();
    if (type.startsWith(u"image/"))
        return {Kind::Picture, bytes, type};
    if (type.startsWith(u"video/"))
        return {Kind::Film, bytes, type};
    return {};
}

} // namespace

AdPlayer::AdPlayer(std::chrono::milliseconds patience, std::chrono::milliseconds loadTime)
    : m_patience(patience), m_loadTime(loadTime)
{
    m_network.setTransferTimeout(static_cast<int>(m_patience.count()));
    m_shown.setSingleShot(true);
    m_stalled.setSingleShot(true);
    m_loading.setSingleShot(true);
    connect(&m_shown, &QTimer::timeout, this, [this] { finish(true); });
    connect(&m_stalled, &QTimer::timeout, this,
            [this] { finish(false, QStringLiteral("the stream has stalled")); });
    connect(&m_loading, &QTimer::timeout, this,
            [this] { finish(false, QStringLiteral("not loaded in time")); });
}

AdPlayer::~AdPlayer() = default;

void AdPlayer::DeleteLater::operator()(QNetworkReply *reply) const
{
    reply->disconnect();
    reply->abort();
    reply->deleteLater();
}

void AdPlayer::play(const QJsonObject &ad)
{
    m_shown.stop();
    m_stalled.stop();
    m_loading.stop();
    m_stream.reset();
    setContent({AdContent::Kind::Loading, {}, {}});
    m_time = std::clamp<std::chrono::seconds>(std::chrono::seconds(ad[u"time"].toInteger()), 1s,
                                              maxTime);
    const auto address = ad[u"url"].toString();
    if (address.size() > maxAddressCharacters &&
        !address.startsWith(u"data:", Qt::CaseInsensitive)) {
        finish(false,
               QStringLiteral("an address of more than %1 characters").arg(maxAddressCharacters));
        return;
    }
    const QUrl url(address);
    // Opening a pipe, or reading a device, would wait for whoever is at its other end.
    if (url.isLocalFile() && !QFileInfo(url.toLocalFile()).isFile()) {
        finish(false, QStringLiteral("there is no such file"));
        return;
    }
    fetch(isStream(url) ? streamAddress(url) : url);
    if (isStream(url)) {
        m_stalled.start(m_patience);
        connect(m_reply.get(), &QIODevice::readyRead, this, &AdPlayer::readStream);
        connect(m_reply.get(), &QNetworkReply::finished, this, [this] {
            finish(false, m_reply->error() == QNetworkReply::NoError
                              ? QStringLiteral("the stream has ended")
                              : m_reply->errorString());
        });
    } else {
        connect(m_reply.get(), &QNetworkReply::downloadProgress, this, &AdPlayer::checkSize);
        connect(m_reply.get(), &QNetworkReply::finished, this, &AdPlayer::showContent);
        m_loading.start(m_loadTime);
    }
}

void AdPlayer::fail(const QString &reason)
{
    if (m_reply || m_shown.isActive())
        finish(false, reason);
}

void AdPlayer::stop()
{
    m_shown.stop();
    m_stalled.stop();
    m_loading.stop();
    m_reply.reset();
    setContent({});
}

void AdPlayer::fetch(const QUrl &address)
{
    QNetworkRequest request(address);
    request.setRawHeader("Accept-Encoding", "identity"); // what inflates to nothing would never end
    auto *const reply = m_network.get(request);
    m_reply.reset(reply);
    // Passed on to the network thread only once the request has started, in an event queued before.
    QMetaObject::invokeMethod(
        reply, [reply] { reply->setReadBufferSize(readAheadBytes); }, Qt::QueuedConnection);
}

void AdPlayer::checkSize()
{
    if (m_reply->bytesAvailable() > maxContentBytes)
        finish(false, QStringLiteral("larger than %1 bytes").arg(maxContentBytes));
}

void AdPlayer::showContent()
{
    const auto reply = std::move(m_reply);
    if (reply->error() != QNetworkReply::NoError) {
        finish(false, reply->errorString());
        return;
    }
    const auto content = recognise(reply->readAll());
    if (content.kind == AdContent::Kind::None) {
        finish(false, QStringLiteral("neither a picture nor a film"));
        return;
    }
    m_loading.stop();
    setContent(content);
    m_shown.start(m_time);
}

void AdPlayer::readStream()
{
    constexpr int ok = 200;
    if (m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != ok) {
        m_reply->skip(m_reply->bytesAvailable()); // the text of a refusal, which ends soon
        return;
    }
    if (!m_stream)
        m_stream.emplace(m_reply->rawHeader("Content-Type"));
    const auto pictures = m_stream->feed(m_reply->readAll());
    bool areReadable = !m_stream->hasFailed();
    AdContent content = m_content;
    for (const auto &picture : pictures) {
        content = recognise(picture);
        areReadable = areReadable && content.kind != AdContent::Kind::None;
    }
    if (!areReadable) {
        finish(false, QStringLiteral("not a stream of pictures"));
        return;
    }
    if (pictures.isEmpty())
        return;
    m_stalled.start(m_patience);
    m_streamPictures += static_cast<int>(pictures.size());
    content.kind = AdContent::Kind::Stream;
    content.frame = m_streamPictures;
    setContent(content);
}

void AdPlayer::setContent(const AdContent &content)
{
    m_content = content;
    Q_EMIT contentChanged();
}

void AdPlayer::finish(bool shown, const QString &reason)
{
    m_shown.stop();
    m_stalled.stop();
    m_loading.stop();
    m_reply.reset();
    m_reason = reason;
    if (!shown)
        setContent({});
    Q_EMIT finished(shown);
}
