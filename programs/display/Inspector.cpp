#include <display/Inspector.h>

#include <common/MessageTypes.h>
#include <common/MonotonicClock.h>
#include <display/Journal.h>

#include <pages/PageAnswers.h>

#include <QDateTime>
#include <QJsonDocument>

#include <algorithm>

namespace {

constexpr int badRequest = 400;
constexpr int conflict = 409;

QJsonObject objectIn(const PageRequest &request)
{
    return QJsonDocument::fromJson(request.content).object();
}

} // namespace

Inspector::Inspector(Journal &journal, const Switches &switches)
    : m_journal(journal), m_switches(switches)
{
    connect(&journal, &Journal::added, this, [this](const QByteArray &entry) {
        if (!m_pages.isEmpty())
            m_pages.publish(EventStreams::event(QStringLiteral("entry"), entry));
    });
}

void Inspector::addRoutes(PageRoutes &routes)
{
    const auto post = QStringLiteral("POST");
    routes.addFile(QStringLiteral("/inspector"), QStringLiteral(":/inspector/index.html"));
    routes.addFolder(QStringLiteral("/inspector/"), QStringLiteral(":/inspector"));
    routes.add(
        QStringLiteral("GET"), QStringLiteral("/journal"), [this](const PageRequest &request) {
            m_pages.open(request.server, EventStreams::event(QStringLiteral("journal"), journal()));
        });
    routes.add(post, QStringLiteral("/switches"),
               [this](const PageRequest &request) { takeSwitches(request); });
    routes.add(post, QStringLiteral("/actions"),
               [this](const PageRequest &request) { takeAction(request); });
    routes.add(post, QStringLiteral("/asked"),
               [this](const PageRequest &request) { takeAsked(request); });
}

QByteArray Inspector::journal() const
{
    const QJsonObject rest{{QStringLiteral("now"), QDateTime::currentMSecsSinceEpoch()},
                           {QStringLiteral("monotonicMs"), monotonicMs()},
                           {QStringLiteral("switches"), m_switches.toJson()}};
    return "{\"entries\":" + m_journal.toJson() + ',' +
           QJsonDocument(rest).toJson(QJsonDocument::Compact).mid(1);
}

void Inspector::takeSwitches(const PageRequest &request)
{
    const auto wanted = objectIn(request);
    m_switches.down = wanted[u"down"].toBool(m_switches.down);
    m_switches.error = wanted[u"error"].toBool(m_switches.error);
    m_switches.slowMs = std::clamp(wanted[u"slowMs"].toInt(m_switches.slowMs), 0, maxSlowMs);
    answerDone(request.server);
    m_pages.publish(QStringLiteral("switches"), m_switches.toJson());
    Q_EMIT switched();
    m_journal.addNote(QStringLiteral("down %1, error %2, %3 ms slow")
                          .arg(m_switches.down ? QStringLiteral("on") : QStringLiteral("off"),
                               m_switches.error ? QStringLiteral("on") : QStringLiteral("off"))
                          .arg(m_switches.slowMs));
}

void Inspector::takeAction(const PageRequest &request)
{
    const auto name = objectIn(request)[u"do"].toString();
    const auto action = m_actions.constFind(name);
    if (action == m_actions.cend()) {
        answerWithText(request.server, badRequest,
                       QStringLiteral("\"do\" must be one of: ") +
                           QStringList(m_actions.keys()).join(QStringLiteral(", ")));
        return;
    }
    m_journal.addNote(name);
    if (const auto obstacle = (*action)(); obstacle.isEmpty())
        answerDone(request.server);
    else
        answerWithText(request.server, conflict, obstacle);
}

void Inspector::takeAsked(const PageRequest &request)
{
    const auto asked = objectIn(request);
    const auto type = asked[u"type"].toString();
    const auto time = asked[u"monotonicMs"];
    if (!isMessageType(type) || !time.isDouble()) {
        answerWithText(request.server, badRequest,
                       QStringLiteral(R"(give {"type":"UpdateDocument","monotonicMs":123.4})"));
        return;
    }
    answerDone(request.server);
    m_journal.addAsked(type, time.toDouble());
}
