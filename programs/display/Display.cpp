#include <display/Display.h>

#include <common/EventLine.h>
#include <common/MessageTypes.h>
#include <common/MonotonicClock.h>
#include <display/MessageText.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

namespace {

constexpr qint64 maxBodyBytes = 33'554'432; // 32 MiB: a picture as a "data:" URI fits
constexpr int maxConnections = 32;          // the register needs one, and each may hold a body

HttpServerOptions serverOptions()
{
    HttpServerOptions options;
    options.maxBodyBytes = maxBodyBytes;
    options.maxConnections = maxConnections;
    return options;
}

} // namespace

Display::Display(const DisplayOptions &options)
    : m_startedMs(monotonicMs())
    , m_server(options.port, serverOptions())
    , m_link(options.pluginUrl, QStringLiteral("display"))
    , m_advertising(m_link)
{
    // Not before the port is ours: the record may be that of the display that has it.
    if (m_server.isListening() && !options.recordFile.isEmpty())
        m_recorder.emplace(options.recordFile);
    connect(&m_server, &HttpServer::requestReceived, this, &Display::receive);
}

void Display::receive(const RequestHeader &header, const QByteArray &content)
{
    const double arrivalMs = monotonicMs();
    const ReceivedMessage message = readMessage(header.method(), header.path(), content);
    answer(message);

    ++m_received;
    if (m_recorder)
        m_recorder->write(m_received, arrivalMs - m_startedMs, arrivalMs, header.path(), message);
    if (message.refusal.isEmpty()) {
        ++m_accepted[message.type];
        printEvent(message.type, describeMessage(message.type, message.body));
        act(message);
    } else {
        ++m_refused;
        Log4Qt::LogManager::logger(QStringLiteral("display"))
            ->warn(QStringLiteral("refused %1 %2: %3")
                       .arg(header.method(), header.path(), message.refusal));
    }
}

void Display::answer(const ReceivedMessage &message)
{
    ResponseHeader header;
    header.setStatusLine(message.status, message.refusal, 1, 1);
    header.setContentType(QStringLiteral("text/plain; charset=utf-8"));
    m_server.sendResponse(header, message.refusal.toUtf8());
}

void Display::act(const ReceivedMessage &message)
{
    if (message.type == u"Configure")
        m_pictures.configure(message.body);
    else if (message.type == u"UpdateDocument")
        askForPictures(message.body);
    else if (message.type == u"ImageData")
        m_pictures.receive(message.body);
    else if (message.type == u"ShowAd")
        m_advertising.play(message.body);
}

void Display::askForPictures(const QJsonObject &receipt)
{
    const auto requests = m_pictures.requestsFor(receipt);
    for (const auto &request : requests)
        m_link.send(request, [this, request](bool accepted) {
            if (!accepted)
                m_pictures.giveUp(request);
        });
}

void Display::printSummary() const
{
    printLine(QStringLiteral("Received: %1 messages, %2 refused").arg(m_received).arg(m_refused));
    for (const auto &type : messageTypes) {
        const auto name = QString::fromLatin1(type.name);
        if (const int count = m_accepted.value(name); count > 0)
            printLine(QStringLiteral("  %1 %2").arg(name, -14).arg(count));
    }
    if (m_pictures.requested() + m_pictures.delivered() + m_pictures.missing() > 0)
        printLine(QStringLiteral("Pictures: %1 asked for, %2 came, %3 said to be missing")
                      .arg(m_pictures.requested())
                      .arg(m_pictures.delivered())
                      .arg(m_pictures.missing()));
    if (m_advertising.shown() + m_advertising.failed() > 0)
        printLine(QStringLiteral("Advertisements: %1 shown, %2 failed, %3 pictures of streams")
                      .arg(m_advertising.shown())
                      .arg(m_advertising.failed())
                      .arg(m_advertising.streamPictures()));
}
