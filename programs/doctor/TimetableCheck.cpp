#include <doctor/TimetableCheck.h>

#include <doctor/HttpExchange.h>
#include <doctor/Redaction.h>
#include <doctor/StreamAddress.h>

#include <Config.h>

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>

namespace doctor {

namespace {

using namespace std::chrono_literals;

const auto check = QStringLiteral("timetable");
constexpr std::chrono::milliseconds maxWait = 3s;
constexpr std::chrono::milliseconds minWait = 50ms; // in less nobody can be expected to answer
constexpr int defaultSeconds = 60;
constexpr int firstError = 400; // of HTTP statuses

struct Advertisement
{
    QString id;
    int index = 0;
    QString url;
    int seconds = 0;
};

QList<Advertisement> readTimetable(const Config &config)
{
    const auto prefix = QStringLiteral("View.ADTimetable.");
    QList<Advertisement> timetable;
    const auto groups = config.childGroups(prefix + u'*', false);
    for (const auto &group : groups)
        timetable.append({redactedText(group.mid(prefix.size())),
                          config.intValue(group + QStringLiteral(":index"), 0),
                          config.stringValue(group + QStringLiteral(":url")),
                          config.intValue(group + QStringLiteral(":time"), defaultSeconds)});
    std::sort(timetable.begin(), timetable.end(),
              [](const auto &a, const auto &b) { return a.index < b.index; });
    return timetable;
}

QJsonObject detailsOf(const Advertisement &ad)
{
    return {{QStringLiteral("id"), ad.id},
            {QStringLiteral("index"), ad.index},
            {QStringLiteral("url"), redactedUrl(ad.url)},
            {QStringLiteral("seconds"), std::max(ad.seconds, 1)}};
}

Findings checkEntry(const Advertisement &ad, const Advertisement *before)
{
    Findings findings;
    if (before != nullptr && before->index == ad.index)
        findings.push_back(warning(
            check,
            Text("У рекламы %1 и %2 одинаковый index %3: порядок показа не определён.",
                 "The advertisements %1 and %2 have the same index %3: their order is "
                 "undefined.")
                .with(before->id, ad.id, ad.index),
            {"Дайте каждой рекламе свой index.", "Give each an index of its own."}, detailsOf(ad)));
    if (ad.seconds < 1)
        findings.push_back(
            warning(check,
                    Text("У рекламы %1 время показа %2 с; действует 1 с.",
                         "The advertisement %1 has a time of %2 s; in effect is 1 s.")
                        .with(ad.id, ad.seconds),
                    Text("Укажите в [View.ADTimetable.%1] time не меньше 1.",
                         "Give a time of at least 1 in [View.ADTimetable.%1].")
                        .with(ad.id),
                    detailsOf(ad)));
    return findings;
}

Finding checkFile(const Advertisement &ad, const QString &fileName)
{
    const QFileInfo file(fileName);
    if (file.isFile() && file.isReadable())
        return ok(check,
                  Text("Реклама %1: файл %2 на месте.", "Advertisement %1: there is the file %2.")
                      .with(ad.id, fileName),
                  detailsOf(ad));
    return failed(check,
                  Text("Реклама %1: файла %2 нет или он не читается.",
                       "Advertisement %1: the file %2 is missing or cannot be read.")
                      .with(ad.id, fileName),
                  {"Положите файл на место или исправьте url. Файл читает дисплей: он нужен на "
                   "компьютере дисплея.",
                   "Put the file there or mend the url. It is the display that reads the file, on "
                   "the display's machine."},
                  detailsOf(ad));
}

Finding checkServer(const Advertisement &ad, const QUrl &url, std::chrono::milliseconds timeout)
{
    const auto answer = exchange({url, timeout});
    const auto place = redactedUrl(ad.url);
    auto details = detailsOf(ad);
    if (answer.outcome != Outcome::Answered)
        return failed(
            check,
            Text("Реклама %1: %2 недоступен: %3.", "Advertisement %1: %2 cannot be reached: %3.")
                .with(ad.id, place, reasonOf(answer)),
            remedyOf(answer, {"Перезапустите сервер рекламы.", "Start the server again."}),
            details);
    details.insert(QStringLiteral("httpStatus"), answer.status);
    if (answer.status >= firstError)
        return failed(check,
                      Text("Реклама %1: %2 отвечает ошибкой HTTP %3.",
                           "Advertisement %1: %2 answers with the HTTP error %3.")
                          .with(ad.id, place, answer.status),
                      {"Исправьте url рекламы или положите её на сервер.",
                       "Mend the url, or put the advertisement on the server."},
                      details);
    return ok(check,
              Text("Реклама %1: %2 отвечает.", "Advertisement %1: %2 answers.").with(ad.id, place),
              details);
}

Finding checkAddress(const Advertisement &ad, const QDeadlineTimer &deadline)
{
    if (ad.url.isEmpty())
        return warning(
            check,
            Text("У рекламы %1 нет адреса (url).", "The advertisement %1 has no address (url).")
                .with(ad.id),
            Text("Укажите url в [View.ADTimetable.%1] или удалите эту группу.",
                 "Give a url in [View.ADTimetable.%1], or remove that group.")
                .with(ad.id),
            detailsOf(ad));
    const QUrl url(ad.url);
    if (url.isLocalFile())
        return checkFile(ad, url.toLocalFile());
    const auto fetched = fetchedAddress(url);
    if (fetched.scheme() != u"http" && fetched.scheme() != u"https")
        return warning(check,
                       Text("Реклама %1: %2 — не адрес http, https или file.",
                            "Advertisement %1: %2 is no address with http, https or file.")
                           .with(ad.id, redactedUrl(ad.url)),
                       {"Укажите полный адрес, например http://127.0.0.1:38083/ads/coffee.svg.",
                        "Give a whole address, for example http://127.0.0.1:38083/ads/coffee.svg."},
                       detailsOf(ad));
    const std::chrono::milliseconds left(deadline.remainingTime());
    if (left < minWait)
        return skipped(check,
                       Text("Реклама %1: не проверена, время вышло.",
                            "Advertisement %1: not checked, the time is over.")
                           .with(ad.id),
                       {"Исправьте то, что найдено раньше, и повторите проверку.",
                        "Mend what was found before, and check again."},
                       detailsOf(ad));
    return checkServer(ad, fetched, std::min(left, maxWait));
}

} // namespace

Findings checkTimetable(const Config &config, std::chrono::milliseconds patience)
{
    const auto timetable = readTimetable(config);
    Findings findings{ok(check,
                         Text("Реклама в настройках: %1.", "Advertisements in the settings: %1.")
                             .with(timetable.size()),
                         {{QStringLiteral("advertisements"), timetable.size()}})};
    const QDeadlineTimer deadline(patience);
    const Advertisement *before = nullptr;
    for (const auto &ad : timetable) {
        append(findings, checkEntry(ad, before));
        findings.push_back(checkAddress(ad, deadline));
        before = &ad;
    }
    return findings;
}

} // namespace doctor
