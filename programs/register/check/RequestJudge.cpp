#include <register/check/RequestJudge.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace {

const auto getImage = QStringLiteral("getImage");
const auto adResult = QStringLiteral("adResult");
constexpr qsizetype maxProblems = 20; // of each name: enough to mend them by

CheckResult resultOf(const QString &name, const QString &what, int count,
                     const QStringList &problems)
{
    if (problems.isEmpty())
        return {name, what, CheckResult::Outcome::Passed, QStringLiteral("%1 came").arg(count), {}};
    return {name, what, CheckResult::Outcome::Failed, problems.join(QStringLiteral("; ")),
            QStringLiteral("Send it as docs/protocol/schemas/%1.json describes it.").arg(name)};
}

} // namespace

void RequestJudge::take(const QByteArray &body)
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
}

CheckResults RequestJudge::results(int port) const
{
    const auto address = QStringLiteral("http://127.0.0.1:%1").arg(port);
    CheckResults results{ofPictures(address), ofAdvertisements(address)};
    if (count({}) > 0)
        results.append(ofOthers());
    return results;
}

CheckResult RequestJudge::ofPictures(const QString &address) const
{
    const auto what = QStringLiteral("the display asks for pictures of goods");
    if (count(getImage) > 0)
        return resultOf(getImage, what, count(getImage), m_problems.value(getImage));
    return {getImage, what, CheckResult::Outcome::Skipped, QStringLiteral("none was asked for"),
            QStringLiteral("If the display is to show pictures, let it POST a getImage to %1.")
                .arg(address)};
}

CheckResult RequestJudge::ofAdvertisements(const QString &address) const
{
    const auto what = QStringLiteral("the display reports how an advertisement went");
    if (count(adResult) > 0)
        return resultOf(adResult, what, count(adResult), m_problems.value(adResult));
    return {adResult, what, CheckResult::Outcome::Failed, QStringLiteral("no result came"),
            QStringLiteral("POST an adResult to %1 when an advertisement has been shown, or cannot "
                           "be: the next one comes only then.")
                .arg(address)};
}

CheckResult RequestJudge::ofOthers() const
{
    return {QStringLiteral("request"), QStringLiteral("all requests are known"),
            CheckResult::Outcome::Failed,
            QStringLiteral("%1 came that the plug-in ignores: %2")
                .arg(count({}))
                .arg(m_problems.value(QString()).join(QStringLiteral("; "))),
            QStringLiteral("Send \"getImage\" and \"adResult\" only.")};
}
