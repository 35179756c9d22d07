#include <display/Display.h>

#include <common/EventLine.h>
#include <common/MonotonicClock.h>
#include <display/MessageText.h>

#include <pages/PageAnswers.h>

#include <HeldRequest.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QUrl>

#include <utility>

namespace {

constexpr qint64 maxBodyBytes = 33'554'432; // 32 MiB: a picture as a "data:" URI fits
constexpr int maxConnections = 64;          // the register needs one, a page up to six
constexpr int maxShownPath = 100;

const auto replayField = QStringLiteral("X-Replay"); // set by the inspector when it plays a record

/// What came from outside must neither break nor colour a line of the log.
QString shownPath(const QString &path)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(path.left(maxShownPath), "/?&=%"));
}

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
    , m_options(options)
    , m_server(options.port, serverOptions())
    , m_guard(serverOptions().address)
    , m_link(options.pluginUrl, m_journal)
    , m_advertising(m_link)
    // Files not before the port is ours: they may be those of the display that has it.
    , m_screen(m_server.isListening() ? options.stateFile : QString(), m_advertising)
    , m_inspector(m_journal, options.switches)
    , m_arrivals([this](Arrival arrival) { answer(std::move(arrival)); }, options.switches.slowMs)
{
    if (m_server.isListening() && !options.recordFile.isEmpty())
        m_recorder.emplace(options.recordFile);
    if (options.check)
        m_check.emplace();
    if (options.pagePort)
        m_pageServer = std::make_unique<HttpServer>(*options.pagePort, serverOptions());
    m_screen.addRoutes(m_routes);
    m_inspector.addRoutes(m_routes);
    addActions();

    m_journal.addNote(QStringLiteral("the display has started"));
    if (isListening())
        takeUpState();
    connect(&m_inspector, &Inspector::switched, this,
            [this] { m_arrivals.setDelay(m_inspector.switches().slowMs); });
    for (auto *server : {&m_server, m_pageServer.get()}) {
        if (server != nullptr)
            connect(server, &HttpServer::requestReceived, this,
                    [this, server](const RequestHeader &header, const QByteArray &content) {
                        receive(*server, header, content);
                    });
    }
}

QString Display::errorString() const
{
    return m_pageServer && m_server.isListening() ? m_pageServer->errorString()
                                                  : m_server.errorString();
}

int Display::failedPort() const
{
    return m_server.isListening() ? m_options.pagePort.value_or(0) : m_options.port;
}

void Display::receive(HttpServer &server, const RequestHeader &header, const QByteArray &content)
{
    if (!servePage(server, header, content))
        receiveMessage(server, header, content);
}

/// Pages of other sites in a browser on this machine must neither see nor switch anything.
bool Display::servePage(HttpServer &server, const RequestHeader &header, const QByteArray &content)
{
    if (!m_routes.has(header))
        return false;
    if (m_guard.admits(header))
        m_routes.serve(server, header, content);
    else
        answerWithText(server, 403,
                       QStringLiteral("open this page by the name 127.0.0.1 or localhost"));
    return true;
}

void Display::receiveMessage(HttpServer &server, const RequestHeader &header,
                             const QByteArray &content)
{
    Arrival arrival{++m_received,
                    monotonicMs(),
                    header.method(),
                    header.path(),
                    content.size(),
                    !header.value(replayField).isEmpty(),
                    readMessage(header.method(), header.path(), content),
                    server.holdRequest()};
    if (m_check && !arrival.isReplay) // what a page plays again is not the register's
        check(header, arrival);
    m_arrivals.add(std::move(arrival));
}

void Display::check(const RequestHeader &header, const Arrival &arrival)
{
    const auto problems = m_check->judge(arrival.number, header, arrival.message);
    for (const auto &problem : problems)
        printEvent(QStringLiteral("check"),
                   QStringLiteral("message %1: %2").arg(arrival.number).arg(problem));
}

void Display::answer(Arrival arrival)
{
    auto &message = arrival.message;
    if (const auto &switches = m_inspector.switches(); switches.down)
        message.status = 0;
    else if (switches.error)
        message.status = 500;
    note(arrival); // first: who has the answer finds the message in the record
    if (message.status == 0) {
        arrival.request->drop();
    } else {
        ResponseHeader header;
        header.setStatusLine(message.status, message.refusal, 1, 1);
        header.setContentType(QStringLiteral("text/plain; charset=utf-8"));
        arrival.request->answer(header, message.refusal.toUtf8());
    }
    if (message.status == 200) {
        ++m_accepted[message.type];
        printEvent(message.type, describeMessage(message.type, message.body));
        m_screen.show(message.type, message.body);
        act(message.type, message.body);
    } else if (!message.refusal.isEmpty()) {
        ++m_refused;
        Log4Qt::LogManager::logger(QStringLiteral("display"))
            ->warn(QStringLiteral("refused %1 %2: %3")
                       .arg(arrival.method, shownPath(arrival.path), message.refusal));
    }
}

/// As the end of a program closes its connections.
void Display::cutWaiting()
{
    for (auto &arrival : m_arrivals.takeAll()) {
        arrival.message.status = 0;
        arrival.request->drop();
        note(arrival);
    }
}

void Display::note(const Arrival &arrival)
{
    const auto &message = arrival.message;
    if (m_recorder)
        m_recorder->write(arrival.number, arrival.ms - m_startedMs, arrival.ms, arrival.path,
                          message);
    m_journal.addMessage({arrival.number, message.type, arrival.path,
                          message.refusal.isEmpty() ? QJsonValue(message.body) : QJsonValue(),
                          arrival.bytes, message.status, message.refusal, arrival.ms,
                          monotonicMs() - arrival.ms, arrival.isReplay});
}

/// Goes on with what mattered in an earlier run; its pictures have been counted then.
void Display::takeUpState()
{
    for (const auto &message : m_screen.messages()) {
        if (message.type != u"ImageData")
            act(message.type, message.body);
    }
}

void Display::act(const QString &type, const QJsonObject &body)
{
    if (type == u"Configure")
        m_pictures.configure(body);
    else if (type == u"UpdateDocument")
        askForPictures(body);
    else if (type == u"ImageData")
        m_pictures.receive(body);
    else if (type == u"ShowAd")
        m_advertising.play(body);
}

void Display::addActions()
{
    m_inspector.addAction(QStringLiteral("restart-empty"), [this] {
        cutWaiting();
        m_advertising.stop();
        m_pictures = Pictures();
        m_screen.clear();
        return QString();
    });
    m_inspector.addAction(QStringLiteral("ask-unknown-image"), [this] {
        m_link.send(Pictures::requestForGoods(QStringLiteral("unknown"), QStringLiteral("unknown")),
                    [](bool) {});
        return QString();
    });
    const auto sendResult = [this](bool shown) {
        return [this, shown] {
            if (m_advertising.number() == 0)
                return QStringLiteral("no advertisement has come yet");
            m_advertising.sendResult(shown);
            return QString();
        };
    };
    m_inspector.addAction(QStringLiteral("duplicate-ad-result"), sendResult(true));
    m_inspector.addAction(QStringLiteral("failed-ad-result"), sendResult(false));
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
