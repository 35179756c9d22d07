#include <doctor/ClockCheck.h>

#include <QFileInfo>
#include <QTimeZone>

#include <cmath>
#include <cstdlib>

namespace doctor {

namespace {

const auto check = QStringLiteral("clock");
constexpr int builtIn = BUILD_YEAR;
constexpr qint64 maxDifferenceSeconds = 60;

Text setTheClock()
{
    return {"Включите часы по сети: sudo timedatectl set-ntp true, и проверьте: timedatectl.",
            "Let the network set the clock: sudo timedatectl set-ntp true, and look: timedatectl."};
}

Findings checkPeer(const PeerClock &clock)
{
    const qint64 seconds = clock.theirs.secsTo(clock.ours);
    const QJsonObject details{{QStringLiteral("differenceSeconds"), seconds}};
    if (std::abs(seconds) <= maxDifferenceSeconds)
        return {ok(
            check,
            Text("Часы идут вместе с часами %1.", "The clock goes with that %1.").with(clock.peer),
            details)};
    return {warning(
        check,
        Text("Часы расходятся с часами %1 на %2 с.", "The clock differs from that %1 by %2 s.")
            .with(clock.peer, std::abs(seconds)),
        setTheClock(), details)};
}

} // namespace

Findings checkClock(const QDateTime &now, const QString &timeZone,
                    const std::vector<PeerClock> &peers)
{
    const QJsonObject details{{QStringLiteral("time"), now.toString(Qt::ISODate)},
                              {QStringLiteral("timeZone"), timeZone}};
    Findings findings;
    if (now.date().year() < builtIn)
        findings.push_back(
            failed(check,
                   Text("Дата компьютера неверна: %1.", "The date of this machine is wrong: %1.")
                       .with(now.toString(Qt::ISODate)),
                   setTheClock(), details));
    if (timeZone.isEmpty())
        findings.push_back(
            warning(check, {"Часовой пояс не задан.", "The time zone is not set."},
                    {"Задайте его, например: sudo timedatectl set-timezone Europe/Moscow.",
                     "Set it, for example: sudo timedatectl set-timezone Europe/Moscow."},
                    details));
    if (findings.empty())
        findings.push_back(ok(check,
                              Text("Часы: %1, часовой пояс %2.", "Clock: %1, time zone %2.")
                                  .with(now.toString(Qt::ISODate), timeZone),
                              details));
    for (const auto &peer : peers)
        append(findings, checkPeer(peer));
    return findings;
}

QString systemTimeZone()
{
    if (!qEnvironmentVariableIsSet("TZ") && !QFileInfo::exists(QStringLiteral("/etc/localtime")))
        return {};
    return QString::fromLatin1(QTimeZone::systemTimeZoneId());
}

} // namespace doctor
