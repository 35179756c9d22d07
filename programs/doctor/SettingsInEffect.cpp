#include <doctor/SettingsInEffect.h>

#include <doctor/Redaction.h>

#include <Config.h>

namespace doctor {

namespace {

QVariant numberInEffect(const KnownSetting &known, const QString &key, const Config &config)
{
    const int number = config.intValue(key, known.preset.toInt());
    return known.instead && number < *known.least ? *known.instead : number;
}

/// The value that the programs read, by the same conversions.
QVariant valueInEffect(const KnownSetting &known, const QString &key, const Config &config)
{
    const bool isSet = config.value(key).isValid();
    if (!isSet && !known.likeKey.isEmpty())
        return config.intValue(known.likeKey, known.preset.toInt());
    if (!isSet || known.sentAsIs)
        return config.value(key, known.preset.toVariant());
    if (known.type == u"integer")
        return numberInEffect(known, key, config);
    if (known.type == u"boolean")
        return config.boolValue(key, known.preset.toBool());
    return config.stringValue(key, known.preset.toString());
}

/// The keys of the file that a known setting stands for; its own if it stands for one only.
QStringList keysFor(const KnownSetting &known, const QStringList &keys,
                    const QList<KnownSetting> &all)
{
    if (!known.key.contains(u'*'))
        return {known.key};
    QStringList found;
    for (const auto &key : keys) {
        if (const auto *meant = findSetting(all, key); meant != nullptr && meant->key == known.key)
            found.append(key);
    }
    return found;
}

} // namespace

QStringList keysOf(const Config &config)
{
    QStringList keys;
    const auto groups = config.childGroups(QStringLiteral("*"), true);
    for (const auto &group : groups) {
        const auto names = config.groupKeys(group, true);
        for (const auto &name : names)
            keys.append(group + u':' + name);
    }
    return keys;
}

QList<SettingInEffect> settingsInEffect(const QList<KnownSetting> &known, const Config &config)
{
    QList<SettingInEffect> settings;
    const auto fileKeys = keysOf(config);
    for (const auto &setting : known) {
        const auto keys = keysFor(setting, fileKeys, known);
        for (const auto &key : keys)
            settings.append({setting, key, config.value(key), valueInEffect(setting, key, config)});
    }
    return settings;
}

QJsonObject toJson(const SettingInEffect &setting)
{
    auto value = QJsonValue::fromVariant(setting.value);
    const bool isUnknown = setting.known.key == u"View.QmlStyle:*"; // may be anything
    if (value.isString())
        value = isUnknown ? QStringLiteral("…") : redactedText(value.toString());
    else if (value.isArray() || value.isObject()) // a setting has neither
        value = QJsonValue();
    return {{QStringLiteral("key"), redactedText(setting.key)},
            {QStringLiteral("value"), value},
            {QStringLiteral("source"),
             setting.isFromFile() ? QStringLiteral("file") : QStringLiteral("default")}};
}

} // namespace doctor
