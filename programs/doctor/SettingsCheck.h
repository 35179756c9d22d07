#pragma once

#include <doctor/Finding.h>
#include <doctor/SettingsInEffect.h>

namespace doctor {

/// What the settings hold that is not read, or not as it stands. `fileKeys` are all keys of the
/// file.
Findings checkSettings(const QList<SettingInEffect> &settings, const QList<KnownSetting> &known,
                       const QStringList &fileKeys);

} // namespace doctor
