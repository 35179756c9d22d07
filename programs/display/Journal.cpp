#include <display/Journal.h>

#include <common/MonotonicClock.h>

#include <QJsonDocument>

namespace {

const auto kindKey = QStringLiteral("kind");
const auto typeKey = QStringLiteral("type");
const auto bodyKey = QStringLiteral("body");
const auto timeKey = QStringLiteral("ms");
const auto tookKey = QStringLiteral("tookMs");

} // namespace

void Journal::addAsked(const QString &type, double atMs)
{
    add({{kindKey, QStringLiteral("asked")}, {typeKey, type}, {timeKey, atMs}});
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
         {QStringLiteral("replay"), message.isReplay}});
}

void Journal::addRequest(const QJsonObject &request, double sentMs, bool accepted)
{
    add({{kindKey, QStringLiteral("request")},
         {QStringLiteral("name"), request[u"name"]},
         {bodyKey, request},
         {timeKey, sentMs},
         {tookKey, monotonicMs() - sentMs},
         {QStringLiteral("accepted"), accepted}});
}

void Journal::addNote(const QString &text)
{
    add({{kindKey, QStringLiteral("note")},
         {QStringLiteral("text"), text},
         {timeKey, monotonicMs()}});
}

QByteArray Journal::toJson() const
{
    QByteArray json = "[";
    json.reserve(static_cast<qsizetype>(m_bytes) + static_cast<qsizetype>(m_entries.size()) + 2);
    for (const auto &entry : m_entries) {
        if (json.size() > 1)
            json += ',';
        json += entry;
    }
    return json + ']';
}

void Journal::add(QJsonObject entry)
{
    entry.insert(QStringLiteral("id"), ++m_lastId);
    m_entries.push_back(QJsonDocument(entry).toJson(QJsonDocument::Compact));
    m_bytes += m_entries.back().size();
    while (m_entries.size() > maxEntries || (m_bytes > maxBytes && m_entries.size() > 1)) {
        m_bytes -= m_entries.front().size();
        m_entries.pop_front();
    }
    Q_EMIT added(m_entries.back());
}
