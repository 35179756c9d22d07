#pragma once

#include <doctor/KnownSettings.h>

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QVariant>

class Config;

namespace doctor {

/// A setting as the programs read it. A value type.
struct SettingInEffect
{
    KnownSetting known;
    QString key;     ///< the full one, where the known one stands for several
    QVariant stored; ///< what the file says; invalid without it
    QVariant value;  ///< what is in effect

    bool isFromFile() const { return stored.isValid(); }
};

/// The known settings with what is in effect, and those of the file for each that stands for
/// several.
QList<SettingInEffect> settingsInEffect(const QList<KnownSetting> &known, const Config &config);

/// All keys of the settings file, as "group:name".
QStringList keysOf(const Config &config);

/// {"key":"ViewConnector:port","value":38081,"source":"default"}; what may be secret in an address
/// is left out.
QJsonObject toJson(const SettingInEffect &setting);

} // namespace doctor
