#include <register/check/RequestJudge.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace {

const auto getImage = QStringLiteral("getImage");
const auto adResult = QStringLiteral("adResult");
constexpr qsizetype maxProblems = 20; // of each name: enough to mend them by

CheckResult broken(const QString &name, const QString &what, const QStringList &problems)
{
    return {name, what, CheckResult::Outcome::Failed, problems.join(QStringLiteral("; ")),
            QStringLiteral("Send it as docs/protocol/schemas/%1.json describes it.").arg(name)};
}

} // namespace

void RequestJudge::take(const QByteArray &body, double atMs)
{
    const auto request = QJsonDocument::fromJson(body).object();
    const auto name = request.value(u"name").toString();
    const bool isKnown = name == getImage || name == adResult;
    auto problems = isKnown ? m_contract.problemsOf(name, request)
                            : QStringList{QString::fromUtf8(body.left(200))};
    ++m_counts[isKnown ? name : QString()];
    auto &known = m_problems[isKnown ? name : QString()];
    if (known.size() < maxProblems)
        known += problems;
    if (name == adResult)
        m_ads.takeReport(request.value(u"value").toBool(), atMs);
}

CheckResults RequestJudge::results(int port) const
{
    const auto address = QStringLiteral("http://127.0.0.1:%1").arg(port);
    CheckResults results{ofPictures(address), ofAdvertisements(address)};
    if (m_counts.contains({}))
        results.append(ofOthers());
    return results;
}

CheckResult RequestJudge::ofPictures(const QString &address) const
{
    const auto what = QStringLiteral("the display asks for pictures of goods");
    if (const auto problems = m_problems.value(getImage); !problems.isEmpty())
        return broken(getImage, what, problems);
    if (const int count = m_counts.value(getImage); count > 0)
        return {
            getImage, what, CheckResult::Outcome::Passed, QStringLiteral("%1 came").arg(count), {}};
    return {getImage, what, CheckResult::Outcome::Skipped, QStringLiteral("none was asked for"),
            QStringLiteral("If the display is to show pictures, let it POST a getImage to %1.")
                .arg(address)};
}

CheckResult RequestJudge::ofAdvertisements(const QString &address) const
{
    if (const auto problems = m_problems.value(adResult); !problems.isEmpty())
        return broken(adResult, QStringLiteral("the display reports its advertisements"), problems);
    return m_ads.result(address);
}

CheckResult RequestJudge::ofOthers() const
{
    return {QStringLiteral("request"), QStringLiteral("all requests are known"),
            CheckResult::Outcome::Failed,
            QStringLiteral("%1 came that the plug-in ignores: %2")
                .arg(m_counts.value({}))
                .arg(m_problems.value(QString()).join(QStringLiteral("; "))),
            QStringLiteral("Send \"getImage\" and \"adResult\" only.")};
}
