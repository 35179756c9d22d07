#include <adservice/AdService.h>

#include <adservice/InterruptibleSleep.h>
#include <adservice/PictureStream.h>
#include <common/EventLine.h>

#include <QUrl>

#include <memory>
#include <utility>

namespace {

const auto streamPath = QStringLiteral("/streams/");
const auto adPath = QStringLiteral("/ads/");

/// A path may hold anything, line ends included.
QString oneLine(const QString &path)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
}

Answer notAllowed(const QByteArray &allowed)
{
    Answer answer = textAnswer(405, "only " + allowed + " is answered here");
    answer.fields.append({"Allow", allowed});
    return answer;
}

} // namespace

AdService::AdService(AdServiceOptions options)
    : m_options(std::move(options))
    , m_ads(m_options.adsFolder)
    , m_announcement{m_options.listen, m_options.stream, m_options.key}
    , m_server(m_options.port, [this](const Request &request) { return handle(request); })
{
    if (m_announcement.listen.isEmpty())
        m_announcement.listen = QStringLiteral("127.0.0.1:%1").arg(port());
    m_ready.count_down();
}

AdService::~AdService()
{
    m_ending.request_stop();
}

std::optional<Answer> AdService::handle(const Request &request) const
{
    m_ready.wait();
    auto answer = route(request);
    if (answer && answer->status >= 400 && answer->status < 500)
        printEvent(QStringLiteral("Refused"),
                   QStringLiteral("%1 %2: %3 %4")
                       .arg(QString::fromLatin1(request.method), oneLine(request.path),
                            QString::number(answer->status),
                            QString::fromUtf8(answer->body).trimmed()));
    return answer;
}

std::optional<Answer> AdService::route(const Request &request) const
{
    const bool isStream = request.path.startsWith(streamPath);
    const bool isAd = request.path.startsWith(adPath);
    if (request.method == "POST" && !isStream && !isAd)
        return subscribe(request);
    if (request.method != "GET")
        return notAllowed(isStream || isAd ? "GET" : "POST");
    if (isStream)
        return stream(request);
    if (isAd)
        return ad(request.path.mid(adPath.size()));
    return textAnswer(404, "there is nothing here");
}

std::optional<Answer> AdService::subscribe(const Request &request) const
{
    const auto answerTime = std::chrono::steady_clock::now() + m_options.answerAfter;
    if (!sleepUntil(m_ending.get_token(), answerTime))
        return std::nullopt;
    auto answer = answerSubscription(request.body, m_announcement, m_options.fault);
    if (answer && answer->status == 400)
        return answer;

    printEvent(QStringLiteral("Subscription"), outcomeOfSubscription());
    if (m_options.fault == Fault::NoAnswer)
        sleepUntil(m_ending.get_token(), std::chrono::steady_clock::time_point::max());
    return answer;
}

QString AdService::outcomeOfSubscription() const
{
    switch (m_options.fault) {
    case Fault::None:
        return QStringLiteral("answered: stream %1 at %2")
            .arg(m_announcement.stream)
            .arg(m_announcement.listen);
    case Fault::Refuse:
    case Fault::NoAnswer:
        return QStringLiteral("left without an answer (%1)").arg(nameOf(m_options.fault));
    default:
        return QStringLiteral("answered with a fault (%1)").arg(nameOf(m_options.fault));
    }
}

Answer AdService::stream(const Request &request) const
{
    if (request.path != streamPath + QString::number(m_options.stream))
        return textAnswer(404, "there is no such stream");
    if (request.query.queryItemValue(QStringLiteral("key"), QUrl::FullyDecoded) != m_options.key)
        return textAnswer(403, "wrong key");
    const auto pictures = std::make_shared<PictureStream>(m_options.frameTime, m_options.streamTime,
                                                          m_ending.get_token());
    return {.fields = {{"Content-Type", PictureStream::contentType}, {"Cache-Control", "no-store"}},
            .more = [pictures] { return pictures->next(); }};
}

Answer AdService::ad(const QString &name) const
{
    auto found = m_ads.find(name);
    if (!found)
        return textAnswer(404, "there is no such advertisement");
    return {.fields = {{"Content-Type", found->mimeType}}, .body = found->content};
}
