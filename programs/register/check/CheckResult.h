#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

/// What one question to a display under test has shown. A value type.
struct CheckResult
{
    enum class Outcome { Passed, Failed, Skipped };

    QString check; ///< the message's type, or the name of the display's request
    QString what;  ///< which of several
    Outcome outcome = Outcome::Passed;
    QString message; ///< what happened
    QString remedy;  ///< what to do; empty if it passed
};

using CheckResults = QList<CheckResult>;

/// One or two lines for people.
QString toText(const CheckResult &result);
/// "12 passed, 1 failed, 0 skipped"
QString summaryOf(const CheckResults &results);
/// {"display":"http://…","passed":12,"failed":1,"skipped":0,"checks":[{"check":"Configure",
///  "what":"…","outcome":"passed","message":"…","remedy":"…"}]}; "remedy" only where there is one.
QJsonObject toJson(const CheckResults &results, const QString &display);
/// Whether something passed and nothing failed.
bool havePassed(const CheckResults &results);
