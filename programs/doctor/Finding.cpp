#include <doctor/Finding.h>

#include <algorithm>
#include <iterator>

namespace doctor {

QString nameOf(Status status)
{
    switch (status) {
    case Status::Ok:
        return QStringLiteral("ok");
    case Status::Warning:
        return QStringLiteral("warning");
    case Status::Failed:
        return QStringLiteral("failed");
    case Status::Skipped:
        return QStringLiteral("skipped");
    }
    return {};
}

Finding ok(const QString &check, const Text &message, const QJsonObject &details)
{
    return {check, Status::Ok, message, {}, details};
}

Finding warning(const QString &check, const Text &message, const Text &remedy,
                const QJsonObject &details)
{
    return {check, Status::Warning, message, remedy, details};
}

Finding failed(const QString &check, const Text &message, const Text &remedy,
               const QJsonObject &details)
{
    return {check, Status::Failed, message, remedy, details};
}

Finding skipped(const QString &check, const Text &message, const Text &remedy,
                const QJsonObject &details)
{
    return {check, Status::Skipped, message, remedy, details};
}

QJsonObject toJson(const Finding &finding, Language language)
{
    auto json = finding.details;
    json.insert(QStringLiteral("check"), finding.check);
    json.insert(QStringLiteral("status"), nameOf(finding.status));
    json.insert(QStringLiteral("message"), finding.message.in(language));
    if (finding.status != Status::Ok)
        json.insert(QStringLiteral("remedy"), finding.remedy.in(language));
    return json;
}

void append(Findings &findings, Findings more)
{
    std::move(more.begin(), more.end(), std::back_inserter(findings));
}

bool hasFailed(const Findings &findings)
{
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding &finding) { return finding.status == Status::Failed; });
}

} // namespace doctor
