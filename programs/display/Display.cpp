#include <display/Display.h>

#include <common/MessageTypes.h>
#include <common/MonotonicClock.h>
#include <display/MessageText.h>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

#include <QTextStream>
#include <QTime>

namespace {

constexpr qint64 maxBodyBytes = 33'554'432; // 32 MiB: a picture as a "data:" URI fits

HttpServerOptions serverOptions()
{
    HttpServerOptions options;
    options.maxBodyBytes = maxBodyBytes;
    return options;
}

void print(const QString &line)
{
    QTextStream(stdout) << line << '\n';
}

} // namespace

Display::Display(const DisplayOptions &options)
    : m_startedMs(monotonicMs()), m_server(options.port, serverOptions())
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
        print(QStringLiteral("%1  %2  %3")
                  .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz")))
                  .arg(message.type, -14)
                  .arg(describeMessage(message.type, message.body)));
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

void Display::printSummary() const
{
    print(QStringLiteral("Received: %1 messages, %2 refused").arg(m_received).arg(m_refused));
    for (const auto &type : messageTypes) {
        const auto name = QString::fromLatin1(type.name);
        if (const int count = m_accepted.value(name); count > 0)
            print(QStringLiteral("  %1 %2").arg(name, -14).arg(count));
    }
}
