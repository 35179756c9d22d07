#include <pages/EventStreams.h>

#include <pages/PageAnswers.h>

#include <HeldRequest.h>
#include <HttpStream.h>

#include <QJsonDocument>

namespace {

using namespace std::chrono_literals;

constexpr auto heartbeat = 5s;
const QByteArray signOfLife = ":\n\n";
/// How long a browser waits before it connects again.
const QByteArray retryAfter = "retry: 500\n\n"; // ms

} // namespace

EventStreams::EventStreams()
{
    connect(&m_heartbeat, &QTimer::timeout, this, [this] { publish(signOfLife); });
}

QByteArray EventStreams::event(const QString &name, const QJsonObject &data)
{
    return event(name, QJsonDocument(data).toJson(QJsonDocument::Compact));
}

QByteArray EventStreams::event(const QString &name, const QByteArray &json)
{
    return "event: " + name.toUtf8() + "\ndata: " + json + "\n\n";
}

void EventStreams::open(HttpServer &server, const QByteArray &first)
{
    publish(signOfLife); // a page that is loaded over and over does not pile up connections
    const auto request = server.holdRequest();
    auto stream = request->answerWithStream(pageHeader(200, QStringLiteral("text/event-stream")));
    stream->write(retryAfter + first);
    m_streams.push_back(std::move(stream));
    m_heartbeat.start(heartbeat);
}

void EventStreams::publish(const QByteArray &event)
{
    for (const auto &stream : m_streams)
        stream->write(event);
    std::erase_if(m_streams, [](const auto &stream) { return !stream->isOpen(); });
    if (m_streams.empty())
        m_heartbeat.stop();
}

void EventStreams::publish(const QString &name, const QJsonObject &data)
{
    if (!isEmpty())
        publish(event(name, data));
}
