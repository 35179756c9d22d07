#include <register/check/AdJudge.h>

#include <register/check/CheckShop.h>

#include <algorithm>

namespace {

/// Less than this is the way of the answer through this machine.
constexpr double noticeableMs = 5;
constexpr int mostInOrder = 10;
constexpr double leastShownMs = CheckShop::adSeconds * 1000.0 / 2;

} // namespace

void AdJudge::takePost(const Post &post)
{
    if (post.result == 0)
        m_ads.append(
            {!post.body.contains(CheckShop::missingAd), post.startedMs, post.startedMs + post.ms});
}

void AdJudge::takeReport(bool wasShown, double atMs)
{
    m_reports.append({wasShown, atMs});
}

bool AdJudge::runsAway() const
{
    return posts() > mostInOrder && !problem({}).message.isEmpty();
}

CheckResult AdJudge::result(const QString &address) const
{
    const auto found = problem(address);
    const bool passed = found.message.isEmpty();
    return {QStringLiteral("adResult"), QStringLiteral("the display reports its advertisements"),
            passed ? CheckResult::Outcome::Passed : CheckResult::Outcome::Failed,
            passed ? QStringLiteral("%1 of %2 reported").arg(reports()).arg(posts())
                   : found.message,
            found.remedy};
}

/// The first thing that is wrong; empty if nothing is.
AdJudge::Problem AdJudge::problem(const QString &address) const
{
    const auto pairs = std::min(m_ads.size(), m_reports.size());
    for (qsizetype number = 0; number < pairs; ++number) {
        if (auto found = problemOf(m_ads[number], m_reports[number]); !found.message.isEmpty())
            return found;
    }
    if (reports() > posts())
        return {QStringLiteral("%1 results came for %2 advertisements").arg(reports()).arg(posts()),
                QStringLiteral("Send one adResult for each /showAD.")};
    if (reports() < CheckShop::ads)
        return {QStringLiteral("%1 of the %2 advertisements were reported")
                    .arg(reports())
                    .arg(CheckShop::ads),
                QStringLiteral("POST an adResult to %1 when an advertisement has been shown, or "
                               "cannot be: the next one comes only then.")
                    .arg(address)};
    return {};
}

AdJudge::Problem AdJudge::problemOf(const Ad &ad, const Report &report)
{
    if (report.atMs < ad.answeredMs - noticeableMs)
        return {
            QStringLiteral("a result came before /showAD was answered"),
            QStringLiteral("Answer first: the plug-in loses the next advertisement otherwise.")};
    if (!ad.exists && report.wasShown)
        return {QStringLiteral("an advertisement that cannot be had was reported as shown"),
                QStringLiteral("Report \"value\": false for it, so that it is left out.")};
    if (ad.exists && !report.wasShown)
        return {QStringLiteral("an advertisement that is there, a PNG, was reported as failed"),
                QStringLiteral("Load it from its \"url\", and report \"value\": true after its "
                               "\"time\".")};
    if (report.wasShown && report.atMs < ad.answeredMs + leastShownMs)
        return {QStringLiteral("an advertisement for %1 s was reported as shown after %2 ms")
                    .arg(CheckShop::adSeconds)
                    .arg(report.atMs - ad.answeredMs, 0, 'f', 0),
                QStringLiteral("Report when its \"time\", in seconds, is over: the next one comes "
                               "at once, and less urgent messages wait.")};
    return {};
}
