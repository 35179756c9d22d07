#include <doctor/DisplayCheck.h>

#include <doctor/DisplayServer.h>
#include <doctor/HttpExchange.h>
#include <doctor/Redaction.h>

#include <algorithm>

namespace doctor {

namespace {

using namespace std::chrono_literals;

const auto check = QStringLiteral("display");
constexpr std::chrono::seconds maxWait = 5s;
constexpr int firstError = 400; // of HTTP statuses

QString shown(Milliseconds time)
{
    return QString::number(time.count(), 'f', 1);
}

QJsonObject detailsOf(const QUrl &server, const HttpAnswer &answer)
{
    QJsonObject details{{QStringLiteral("address"), redactedUrl(server.toString())},
                        {QStringLiteral("reachable"), answer.outcome == Outcome::Answered}};
    if (!answer.peer.isEmpty())
        details.insert(QStringLiteral("ip"), answer.peer);
    if (answer.connectTime.count() > 0 || answer.outcome == Outcome::Answered)
        details.insert(QStringLiteral("connectMs"), answer.connectTime.count());
    if (answer.outcome == Outcome::Answered) {
        details.insert(QStringLiteral("firstByteMs"), answer.firstByteTime.count());
        details.insert(QStringLiteral("httpStatus"), answer.status);
    }
    return details;
}

/// About an address that can be posted to, but holds what is of no use.
Findings checkForm(const QUrl &server)
{
    Findings findings;
    if (!server.userInfo().isEmpty())
        findings.push_back(
            warning(check,
                    {"В адресе дисплея указаны имя или пароль.",
                     "The address of the display holds a user name or a password."},
                    {"Уберите из ViewConnector:server всё до знака @ после «//».",
                     R"(Take what stands between "//" and "@" out of ViewConnector:server.)"}));
    if (server.hasQuery() || server.hasFragment() ||
        !(server.path().isEmpty() || server.path() == u"/"))
        findings.push_back(
            warning(check,
                    {"В адресе дисплея указан путь или запрос: путь плагин заменяет своим.",
                     "The address of the display holds a path or a query: the plug-in replaces the "
                     "path by its own."},
                    {"Оставьте в ViewConnector:server только http://адрес:порт.",
                     "Leave nothing but http://address:port in ViewConnector:server."}));
    return findings;
}

Finding checkAnswer(const QUrl &server, const HttpAnswer &answer, std::chrono::seconds timeout)
{
    const auto place = redactedUrl(server.toString());
    const auto details = detailsOf(server, answer);
    if (answer.outcome != Outcome::Answered)
        return failed(check,
                      Text("Дисплей %1 недоступен: %2.", "The display %1 cannot be reached: %2.")
                          .with(place, reasonOf(answer)),
                      remedyOf(answer, {"На компьютере дисплея: "
                                        "systemctl --user restart viewconnector-display",
                                        "On the display's machine: "
                                        "systemctl --user restart viewconnector-display"}),
                      details);
    const auto time = shown(answer.firstByteTime);
    if (answer.firstByteTime > Milliseconds(timeout) / 2)
        return warning(check,
                       Text("Дисплей %1 отвечает медленно: %2 мс, а касса ждёт не дольше %3 с.",
                            "The display %1 answers slowly: after %2 ms of the %3 s that are "
                            "waited for it.")
                           .with(place, time, qint64{timeout.count()}),
                       {"Проверьте нагрузку компьютера дисплея и сеть или увеличьте "
                        "ViewConnector:timeout.",
                        "Check the load of the display's machine and the network, or raise "
                        "ViewConnector:timeout."},
                       details);
    if (answer.status >= firstError)
        return warning(check,
                       Text("По адресу дисплея %1 кто-то отвечает, но, может быть, это не дисплей: "
                            "HTTP %2.",
                            "Somebody answers at the display's address %1, but it may be no "
                            "display: HTTP %2.")
                           .with(place, answer.status),
                       {"Проверьте адрес и порт в ViewConnector:server; чей это порт: ss -ltnp",
                        "Check address and port in ViewConnector:server; whose port it is: "
                        "ss -ltnp"},
                       details);
    return ok(check,
              Text("Дисплей %1 отвечает: соединение %2 мс, ответ HTTP %3 через %4 мс.",
                   "The display %1 answers: connected after %2 ms, HTTP answer %3 after %4 ms.")
                  .with(place, shown(answer.connectTime), answer.status, time),
              details);
}

} // namespace

DisplayResult checkDisplay(const QString &setting, std::chrono::seconds timeout)
{
    const auto server = displayServer(setting);
    const bool hasScheme = server.scheme() == u"http" || server.scheme() == u"https";
    if (!server.isValid() || !hasScheme || server.host().isEmpty())
        return {{failed(check,
                        Text("ViewConnector:server «%1» — не адрес дисплея.",
                             "ViewConnector:server \"%1\" is no address of a display.")
                            .with(redactedUrl(setting)),
                        {"Укажите адрес вида http://127.0.0.1:38080: http или https, имя или "
                         "IP-адрес, порт.",
                         "Give an address like http://127.0.0.1:38080: http or https, name or IP "
                         "address, port."},
                        {{QStringLiteral("address"), redactedUrl(setting)},
                         {QStringLiteral("reachable"), false}})},
                {}};

    QUrl page = server;
    page.setPath(QStringLiteral("/"));
    page.setQuery(QString());
    const auto answer = exchange({page, std::min(timeout, maxWait)});
    DisplayResult result;
    result.findings = checkForm(server);
    result.findings.push_back(checkAnswer(server, answer, timeout));
    if (answer.date().isValid())
        result.clock = PeerClock{
            {"дисплея", "of the display"}, answer.date(), QDateTime::currentDateTimeUtc()};
    return result;
}

} // namespace doctor
