#pragma once

#include <HostExport.h>
#include <Singleton.h>

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <shared_mutex>

/**
 * The host's configuration store: typed settings under keys of the form "group:name", where the
 * group may hold dots ("View.Style:displayType"). Keys are case-sensitive.
 *
 * Owner: the host; the plug-in reaches it as Singleton<Config>.
 * Thread: every member is thread-safe; settings are read on the main and on the client thread and
 * may be written meanwhile.
 * Errors: reads never fail, they fall back to the default that they are given or to the conversion
 * of QVariant; `load` throws.
 */
class HOST_EXPORT Config
{
public:
    Config() = default;

    /// Replaces all settings by those of a TOML file. Throws ConfigError and changes nothing if the
    /// file cannot be read or is not TOML.
    void load(const QString &fileName);

    /// The stored value with its stored type, or `defaultValue` if the key is absent.
    QVariant value(const QString &key, const QVariant &defaultValue = {}) const;
    QString stringValue(const QString &key, const QString &defaultValue = {}) const;
    /// A number beyond the range of int reads as the nearest int, a text that is no number as 0.
    int intValue(const QString &key, int defaultValue) const;
    bool boolValue(const QString &key, bool defaultValue) const;

    /// The names, without group and colon, of the keys in `group`, in alphabetical order; with
    /// `ownOnly` false also those of its sub-groups, as "sub.group:name".
    QStringList groupKeys(const QString &group, bool ownOnly) const;

    /// The full names of the groups that match `pattern`, in alphabetical order; "*" stands for any
    /// text. With `withKeysOnly` a group without a key of its own is left out.
    QStringList childGroups(const QString &pattern, bool withKeysOnly) const;

    /// Whether the register runs the touch interface: the setting "View.Interface:touchng".
    bool isTouchInterface() const;

    /// Sets a value in memory, not in the file. An invalid `value` removes the setting.
    void setValue(const QString &key, const QVariant &value);

private:
    mutable std::shared_mutex m_mutex;
    QMap<QString, QVariantMap> m_groups; // guarded by m_mutex
};

extern template class HOST_EXPORT Singleton<Config>;
