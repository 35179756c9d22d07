#include <display/CustomerScreen.h>

#include <display/Advertising.h>
#include <display/LookSetting.h>
#include <display/QrPicture.h>

#include <pages/PageAnswers.h>

#include <QDateTime>
#include <QJsonDocument>

namespace {

constexpr int notFound = 404;

const auto svg = QStringLiteral("image/svg+xml");

QString nameOf(AdContent::Kind kind)
{
    using Kind = AdContent::Kind;
    switch (kind) {
    case Kind::None:
        break;
    case Kind::Loading:
        return QStringLiteral("loading");
    case Kind::Picture:
        return QStringLiteral("picture");
    case Kind::Film:
        return QStringLiteral("film");
    case Kind::Stream:
        return QStringLiteral("stream");
    }
    return QStringLiteral("none");
}

void answerLook(const PageRequest &request, const LookFile &look)
{
    if (look.content.isEmpty())
        answerWithText(request.server, notFound, QStringLiteral("the settings name no picture"));
    else
        answerWith(request.server, look.contentType, look.content);
}

} // namespace

CustomerScreen::CustomerScreen(const QString &stateFile, Advertising &advertising)
    : m_advertising(advertising), m_file(stateFile), m_messages(m_file.read())
{
    for (const auto &message : m_messages.all())
        m_lastNumber = std::max(m_lastNumber, message.number);
    readLook();
    connect(&advertising, &Advertising::contentChanged, this,
            [this] { m_pages.publish(QStringLiteral("ad"), advertisement()); });
}

void CustomerScreen::show(const QString &type, const QJsonObject &body)
{
    const KeptMessage message{++m_lastNumber, type, body, QDateTime::currentMSecsSinceEpoch()};
    m_messages.keep(message);
    m_file.add(message, m_messages);
    if (type == u"Configure")
        readLook();
    m_pages.publish(QStringLiteral("message"), message.toJson());
}

void CustomerScreen::clear()
{
    m_messages.clear();
    m_file.rewrite(m_messages);
    readLook();
    m_pages.publish(QStringLiteral("state"), state());
}

void CustomerScreen::addRoutes(PageRoutes &routes)
{
    const auto get = QStringLiteral("GET");
    routes.addFile(QStringLiteral("/"), QStringLiteral(":/screen/index.html"));
    routes.addFolder(QStringLiteral("/screen/"), QStringLiteral(":/screen"));
    routes.add(get, QStringLiteral("/events"), [this](const PageRequest &request) {
        m_pages.open(request.server, EventStreams::event(QStringLiteral("state"), state()));
    });
    routes.add(get, QStringLiteral("/qr.svg"),
               [this](const PageRequest &request) { answerQr(request); });
    routes.add(get, QStringLiteral("/look/logo"),
               [this](const PageRequest &request) { answerLook(request, m_logo); });
    routes.add(get, QStringLiteral("/look/background"),
               [this](const PageRequest &request) { answerLook(request, m_background); });
    routes.add(get, QStringLiteral("/ad"),
               [this](const PageRequest &request) { answerAd(request); });
    routes.add(QStringLiteral("POST"), QStringLiteral("/ad-failed"),
               [this](const PageRequest &request) { takeFailedAd(request); });
}

QJsonObject CustomerScreen::state() const
{
    return {{QStringLiteral("now"), QDateTime::currentMSecsSinceEpoch()},
            {QStringLiteral("messages"), m_messages.toJson()},
            {QStringLiteral("ad"), advertisement()}};
}

QJsonObject CustomerScreen::advertisement() const
{
    const auto &content = m_advertising.content();
    return {{QStringLiteral("n"), m_advertising.number()},
            {QStringLiteral("kind"), nameOf(content.kind)},
            {QStringLiteral("frame"), content.frame}};
}

void CustomerScreen::readLook()
{
    const auto settings = m_messages.find(QStringLiteral("Configure"));
    const auto read = [&](const QString &name) {
        return settings ? LookFile::read(lookSetting(settings->body, name, QJsonValue::String))
                        : LookFile();
    };
    m_logo = read(QStringLiteral("appLogoPath"));
    m_background = read(QStringLiteral("backgroundImagePath"));
}

void CustomerScreen::answerQr(const PageRequest &request) const
{
    const auto payment = m_messages.find(QStringLiteral("QrPayment"));
    const auto picture = payment ? qrPicture(payment->body[u"qrCode"].toString()) : QByteArray();
    if (picture.isEmpty())
        answerWithText(request.server, notFound,
                       QStringLiteral("there is no QR payment, or its text fits no QR code"));
    else
        answerWith(request.server, svg, picture);
}

/// A page that asks for an earlier advertisement is late, which is no error.
void CustomerScreen::answerAd(const PageRequest &request) const
{
    const auto &content = m_advertising.content();
    const auto number = request.query.queryItemValue(QStringLiteral("n")).toInt();
    if (number != m_advertising.number() || content.bytes.isEmpty())
        answerDone(request.server);
    else
        answerWith(request.server, content.mimeType, content.bytes);
}

void CustomerScreen::takeFailedAd(const PageRequest &request)
{
    const auto report = QJsonDocument::fromJson(request.content).object();
    answerDone(request.server);
    m_advertising.fail(report[u"n"].toInt(), report[u"reason"].toString().left(200));
}
