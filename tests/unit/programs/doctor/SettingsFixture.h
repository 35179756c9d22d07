#pragma once

#include <doctor/SettingsInEffect.h>

#include <contract/Contract.h>

#include <Config.h>

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace doctor {

/// Settings of a test's own, from a file.
class SettingsFixture : public testing::Test
{
protected:
    void load(const QByteArray &toml)
    {
        QFile file(folder.filePath("shop.toml"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(toml);
        file.close();
        config.load(file.fileName());
    }

    /// The setting in effect; there must be one of that key.
    SettingInEffect setting(const QString &key) const
    {
        for (const auto &each : settingsInEffect(known, config)) {
            if (each.key == key)
                return each;
        }
        ADD_FAILURE() << key.toStdString();
        return {};
    }

    QTemporaryDir folder;
    Config config;
    const QList<KnownSetting> known = knownSettings(Contract());
};

} // namespace doctor
