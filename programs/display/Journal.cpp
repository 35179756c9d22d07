#include <display/Journal.h>

#include <common/MonotonicClock.h>

#include <QJsonDocument>

namespace {

constexpr qint64 bytesBesidesTheBody = 512;

const auto kindKey = QStringLiteral("kind");
const auto typeKey = QStringLiteral("type");
const auto bodyKey = QStringLiteral("body");
const auto timeKey = QStringLiteral("ms");
const auto tookKey = QStringLiteral("tookMs");

} // namespace

void Journal::addAsked(const QString &type, double atMs)
{
    add({{kindKey, QStringLiteral("asked")}, {typeKey, type}, {timeKey, atMs}}, 0);
}

void Journal::addMessage(const JournalMessage &message)
{
    add({{kindKey, QStringLiteral("message")},
         {QStringLiteral("n"), message.number},
         {typeKey, message.type},
         {QStringLiteral("path"), message.path},
         {bodyKey, message.body},
         {QStringLiteral("bytes"), message.bytes},
         {QStringLiteral("status"), message.status},
         {QStringLiteral("reason"), message.reason},
         {timeKey, message.arrivalMs},
         {tookKey, message.tookMs},
         {QStringLiteral("replay"), message.isReplay}},
        (message.body.isNull() ? 0 : message.bytes) + message.path.size());
}

void Journal::addRequest(const QJsonObject &request, double sentMs, bool accepted)
{
    add({{kindKey, QStringLiteral("request")},
         {QStringLiteral("name"), request[u"name"]},
         {bodyKey, request},
         {timeKey, sentMs},
         {tookKey, monotonicMs() - sentMs},
         {QStringLiteral("accepted"), accepted}},
        QJsonDocument(request).toJson(QJsonDocument::Compact).size());
}

void Journal::addNote(const QString &text)
{
    add({{kindKey, QStringLiteral("note")},
         {QStringLiteral("text"), text},
         {timeKey, monotonicMs()}},
        0);
}

QJsonArray Journal::entries() const
{
    QJsonArray array;
    for (const auto &entry : m_entries)
        array.append(entry.json);
    return array;
}

void Journal::add(QJsonObject entry, qint64 bytes)
{
    entry.insert(QStringLiteral("id"), ++m_lastId);
    m_entries.push_back({entry, bytes + bytesBesidesTheBody});
    m_bytes += m_entries.back().bytes;
    while (m_entries.size() > maxEntries || (m_bytes > maxBytes && m_entries.size() > 1)) {
        m_bytes -= m_entries.front().bytes;
        m_entries.pop_front();
    }
    Q_EMIT added(entry);
}
