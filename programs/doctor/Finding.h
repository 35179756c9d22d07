#pragma once

#include <doctor/Text.h>

#include <QJsonObject>
#include <QString>

#include <vector>

namespace doctor {

enum class Status { Ok, Warning, Failed, Skipped };

/// "ok", "warning", "failed" or "skipped".
QString nameOf(Status status);

/// What a check has found. A value type.
struct Finding
{
    QString check; ///< the check's name, the same in each language
    Status status = Status::Ok;
    Text message;
    Text remedy;         ///< what to do; empty if all is well
    QJsonObject details; ///< for programs; none of them is called like a member above
};

using Findings = std::vector<Finding>;

Finding ok(const QString &check, const Text &message, const QJsonObject &details = {});
Finding warning(const QString &check, const Text &message, const Text &remedy,
                const QJsonObject &details = {});
Finding failed(const QString &check, const Text &message, const Text &remedy,
               const QJsonObject &details = {});
Finding skipped(const QString &check, const Text &message, const Text &remedy,
                const QJsonObject &details = {});

/// {"check":"display","status":"failed","message":"…","remedy":"…"} and the details.
QJsonObject toJson(const Finding &finding, Language language);

void append(Findings &findings, Findings more);
bool hasFailed(const Findings &findings);

} // namespace doctor
