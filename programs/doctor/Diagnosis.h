#pragma once

#include <doctor/Finding.h>
#include <doctor/SettingsInEffect.h>

#include <QDateTime>
#include <QJsonObject>

namespace doctor {

/// All that the checks have found. A value type.
struct Diagnosis
{
    QString configFile;
    QDateTime time;
    Findings findings;
    QList<SettingInEffect> settings;
};

/// {"program":…,"version":…,"time":…,"config":…,"language":"ru","result":"failed",
///  "counts":{"ok":9,"warning":0,"failed":1,"skipped":2},"findings":[…],"settings":[…]}
QJsonObject toJson(const Diagnosis &diagnosis, Language language);

/// For people: the settings of the file, each finding with its remedy, and a summary as the last
/// line.
QString toText(const Diagnosis &diagnosis, Language language);

} // namespace doctor
