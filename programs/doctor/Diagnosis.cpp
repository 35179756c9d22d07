#include <doctor/Diagnosis.h>

#include <common/CommandLine.h>

#include <QJsonArray>

#include <algorithm>
#include <array>

namespace doctor {

namespace {

constexpr std::array statuses{Status::Ok, Status::Warning, Status::Failed, Status::Skipped};

qint64 countOf(const Findings &findings, Status status)
{
    return std::count_if(findings.begin(), findings.end(),
                         [=](const Finding &finding) { return finding.status == status; });
}

QString markOf(Status status)
{
    switch (status) {
    case Status::Ok:
        return QStringLiteral("✓");
    case Status::Warning:
        return QStringLiteral("!");
    case Status::Failed:
        return QStringLiteral("✗");
    case Status::Skipped:
        return QStringLiteral("–");
    }
    return {};
}

/// Those that the file sets, or those that it does not.
QString settingsOf(const Diagnosis &diagnosis, bool fromFile)
{
    QString text;
    for (const auto &setting : diagnosis.settings) {
        if (setting.isFromFile() != fromFile)
            continue;
        const auto json = toJson(setting);
        text += QStringLiteral("    %1 = %2\n")
                    .arg(json[u"key"].toString(), json[u"value"].toVariant().toString());
    }
    return text;
}

/// What there is most of comes first: on a screen the findings are in view.
QString settingsText(const Diagnosis &diagnosis, Language language)
{
    const Text ofDefaults("Настройки по умолчанию:\n", "Settings by default:\n");
    const auto ofFile = Text("Действующие значения того, что задано в файле %1:\n",
                             "What is in effect of the settings in the file %1:\n")
                            .with(diagnosis.configFile);
    return ofDefaults.in(language) + settingsOf(diagnosis, false) + u'\n' + ofFile.in(language) +
           settingsOf(diagnosis, true) + u'\n';
}

Text summaryOf(const Findings &findings)
{
    return Text("Итог: ошибок %1, предупреждений %2, в порядке %3, пропущено %4.",
                "Summary: %1 failed, %2 warnings, %3 ok, %4 skipped.")
        .with(countOf(findings, Status::Failed), countOf(findings, Status::Warning),
              countOf(findings, Status::Ok), countOf(findings, Status::Skipped));
}

} // namespace

QJsonObject toJson(const Diagnosis &diagnosis, Language language)
{
    QJsonArray findings;
    for (const auto &finding : diagnosis.findings)
        findings.append(toJson(finding, language));
    QJsonArray settings;
    for (const auto &setting : diagnosis.settings)
        settings.append(toJson(setting));
    QJsonObject counts;
    for (const auto status : statuses)
        counts.insert(nameOf(status), countOf(diagnosis.findings, status));
    return {{QStringLiteral("program"), QStringLiteral("viewconnector-doctor")},
            {QStringLiteral("version"), CommandLine::version()},
            {QStringLiteral("time"), diagnosis.time.toString(Qt::ISODate)},
            {QStringLiteral("config"), diagnosis.configFile},
            {QStringLiteral("language"),
             language == Language::Russian ? QStringLiteral("ru") : QStringLiteral("en")},
            {QStringLiteral("result"),
             nameOf(hasFailed(diagnosis.findings) ? Status::Failed : Status::Ok)},
            {QStringLiteral("counts"), counts},
            {QStringLiteral("findings"), findings},
            {QStringLiteral("settings"), settings}};
}

QString toText(const Diagnosis &diagnosis, Language language)
{
    QString text = settingsText(diagnosis, language);
    for (const auto &finding : diagnosis.findings) {
        text += markOf(finding.status) + u' ' + finding.message.in(language) + u'\n';
        if (!finding.remedy.isEmpty())
            text += QStringLiteral("    → ") + finding.remedy.in(language) + u'\n';
    }
    return text + u'\n' + summaryOf(diagnosis.findings).in(language) + u'\n';
}

} // namespace doctor
