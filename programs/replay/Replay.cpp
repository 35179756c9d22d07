#include <replay/Replay.h>

#include <common/EventLine.h>
#include <common/JsonLine.h>
#include <common/MonotonicClock.h>
#include <common/UsageError.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr std::chrono::seconds patience(60);
constexpr double longestWaitMs = 60'000; // a timer does not reach for months

/// Reads all of it, so that nothing is sent of a broken recording. Returns the time of its first
/// message.
double check(const QString &fileName)
{
    RecordingReader reader(fileName);
    const auto first = reader.next();
    if (!first)
        throw UsageError(QStringLiteral("--recording %1 has no message that a display accepted: "
                                        "give another.")
                             .arg(fileName));
    while (reader.next())
        continue;
    return first->ms;
}

bool isAccepted(int status)
{
    return status >= 200 && status < 300;
}

/// Microseconds are enough, and keep the line readable.
double rounded(double milliseconds)
{
    return std::round(milliseconds * 1000) / 1000;
}

void printJson(const QList<JsonField> &fields)
{
    printLine(QString::fromUtf8(jsonLine(fields)).chopped(1));
}

} // namespace

Replay::Replay(const ReplayOptions &options)
    : m_options(options), m_firstMs(check(options.recording)), m_reader(options.recording)
{
    m_due.setSingleShot(true);
    m_due.setTimerType(Qt::PreciseTimer);
    connect(&m_due, &QTimer::timeout, this, &Replay::sendWhenDue);
}

void Replay::start()
{
    m_startedMs = monotonicMs();
    takeNext();
}

void Replay::takeNext()
{
    try {
        m_message = m_reader.next();
        m_isOver = !m_message;
    } catch (const UsageError &error) {
        m_message.reset();
        m_error = QString::fromUtf8(error.what());
    }
    if (m_message)
        m_due.start(0); // by the event loop, so that the program can be ended at any speed
    else
        Q_EMIT finished();
}

void Replay::sendWhenDue()
{
    const double speed = m_options.speed;
    const double due = speed == 0 ? 0 : m_startedMs + (m_message->ms - m_firstMs) / speed;
    const double wait = due - monotonicMs();
    if (wait > 0)
        m_due.start(static_cast<int>(std::ceil(std::min(wait, longestWaitMs))));
    else
        send();
}

void Replay::send()
{
    ++m_sent;
    HttpRequest request{
        serverOf(m_options.displayUrl), "POST", m_message->path, {}, m_message->body};
    request.fields = {{QStringLiteral("Accept"), QStringLiteral("application/json")},
                      {QStringLiteral("Content-Type"), QStringLiteral("application/json")},
                      {QStringLiteral("X-Replay"), QStringLiteral("1")}};
    m_thread = std::jthread([this, request = std::move(request)](const std::stop_token &stop) {
        const double sentMs = monotonicMs();
        auto answer = transfer(request, patience, stop);
        const double tookMs = monotonicMs() - sentMs;
        QMetaObject::invokeMethod(
            this, [this, answer = std::move(answer), tookMs] { takeAnswer(answer, tookMs); },
            Qt::QueuedConnection);
    });
}

void Replay::takeAnswer(const HttpAnswer &answer, double tookMs)
{
    if (isAccepted(answer.status))
        ++m_accepted;
    else if (answer.status != 0)
        ++m_refused;
    print(answer, tookMs);
    takeNext();
}

void Replay::print(const HttpAnswer &answer, double tookMs) const
{
    if (m_options.json) {
        QList<JsonField> fields{{QStringLiteral("n"), m_sent},
                                {QStringLiteral("line"), m_message->line},
                                {QStringLiteral("type"), m_message->type},
                                {QStringLiteral("status"), answer.status},
                                {QStringLiteral("took"), rounded(tookMs)}};
        if (answer.status == 0)
            fields.append({QStringLiteral("error"), answer.error});
        printJson(fields);
        return;
    }
    const auto outcome = answer.status == 0 ? QStringLiteral("no answer: %1").arg(answer.error)
                         : isAccepted(answer.status)
                             ? QStringLiteral("accepted in %1 ms").arg(tookMs, 0, 'f', 1)
                             : QStringLiteral("refused with %1").arg(answer.status);
    printEvent(m_message->type, QStringLiteral("line %1: %2").arg(m_message->line).arg(outcome));
}

void Replay::printSummary() const
{
    const int unanswered = m_sent - m_accepted - m_refused;
    if (m_options.json)
        printJson({{QStringLiteral("sent"), m_sent},
                   {QStringLiteral("accepted"), m_accepted},
                   {QStringLiteral("refused"), m_refused},
                   {QStringLiteral("unanswered"), unanswered},
                   {QStringLiteral("passedOver"), m_reader.passedOver()}});
    else
        printLine(QStringLiteral("Sent %1 messages: %2 accepted, %3 refused, %4 without an answer; "
                                 "%5 of the recording passed over")
                      .arg(m_sent)
                      .arg(m_accepted)
                      .arg(m_refused)
                      .arg(unanswered)
                      .arg(m_reader.passedOver()));
}
