#include <register/check/CheckResult.h>

#include <QJsonArray>

#include <algorithm>

namespace {

using Outcome = CheckResult::Outcome;

QString nameOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Passed:
        return QStringLiteral("passed");
    case Outcome::Failed:
        return QStringLiteral("failed");
    case Outcome::Skipped:
        return QStringLiteral("skipped");
    }
    return {};
}

int count(const CheckResults &results, Outcome outcome)
{
    return static_cast<int>(
        std::count_if(results.begin(), results.end(),
                      [outcome](const CheckResult &result) { return result.outcome == outcome; }));
}

QJsonObject toJson(const CheckResult &result)
{
    QJsonObject json{{QStringLiteral("check"), result.check},
                     {QStringLiteral("what"), result.what},
                     {QStringLiteral("outcome"), nameOf(result.outcome)},
                     {QStringLiteral("message"), result.message}};
    if (!result.remedy.isEmpty())
        json.insert(QStringLiteral("remedy"), result.remedy);
    return json;
}

} // namespace

QString toText(const CheckResult &result)
{
    auto text = QStringLiteral("%1 %2 %3: %4")
                    .arg(nameOf(result.outcome), -7)
                    .arg(result.check, -14)
                    .arg(result.what, result.message);
    if (!result.remedy.isEmpty())
        text += QStringLiteral("\n        -> ") + result.remedy;
    return text;
}

QString summaryOf(const CheckResults &results)
{
    return QStringLiteral("%1 passed, %2 failed, %3 skipped")
        .arg(count(results, Outcome::Passed))
        .arg(count(results, Outcome::Failed))
        .arg(count(results, Outcome::Skipped));
}

QJsonObject toJson(const CheckResults &results, const QString &display)
{
    QJsonArray checks;
    for (const auto &result : results)
        checks.append(toJson(result));
    return {{QStringLiteral("display"), display},
            {QStringLiteral("passed"), count(results, Outcome::Passed)},
            {QStringLiteral("failed"), count(results, Outcome::Failed)},
            {QStringLiteral("skipped"), count(results, Outcome::Skipped)},
            {QStringLiteral("checks"), checks}};
}

bool havePassed(const CheckResults &results)
{
    return count(results, Outcome::Passed) > 0 && count(results, Outcome::Failed) == 0;
}
