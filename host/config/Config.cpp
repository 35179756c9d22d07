#include <Config.h>

#include <SingletonDefinition.h>
#include <TomlFile.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <utility>

template class Singleton<Config>;

namespace {

/// "View.Style:displayType" is the name "displayType" in the group "View.Style".
std::pair<QString, QString> splitKey(const QString &key)
{
    const auto colon = key.indexOf(u':');
    return colon < 0 ? std::pair(QString(), key) : std::pair(key.left(colon), key.mid(colon + 1));
}

/// Adds a table under its name and the tables in it under theirs. A table that only leads to deeper
/// ones is no group.
void addGroups(const QVariantMap &table, const QString &name, QMap<QString, QVariantMap> &groups)
{
    QVariantMap values;
    for (auto entry = table.begin(); entry != table.end(); ++entry) {
        if (entry->typeId() == QMetaType::QVariantMap)
            addGroups(entry->toMap(), name.isEmpty() ? entry.key() : name + u'.' + entry.key(),
                      groups);
        else
            values.insert(entry.key(), *entry);
    }
    if (!values.isEmpty() || table.isEmpty())
        groups[name].insert(values); // a quoted key may name what a dotted one has named
}

/// Whether `pattern` fits all of `text`; each "*" stands for any text. Not a regular expression,
/// whose compilation would take longer than all else that a plug-in reads here.
bool matches(QStringView text, QStringView pattern)
{
    const auto parts = pattern.split(u'*');
    if (parts.size() == 1)
        return text == pattern;
    if (text.isEmpty())
        text = u""; // to Qt a null text does not even begin with an empty one
    if (!text.startsWith(parts.first()))
        return false;
    text = text.sliced(parts.first().size());
    for (qsizetype i = 1; i < parts.size() - 1; ++i) {
        const auto at = text.indexOf(parts[i]); // the first: it leaves the most to the others
        if (at < 0)
            return false;
        text = text.sliced(at + parts[i].size());
    }
    return text.endsWith(parts.last());
}

} // namespace

void Config::load(const QString &fileName)
{
    QMap<QString, QVariantMap> groups;
    addGroups(readTomlFile(fileName), {}, groups);
    const std::unique_lock guard(m_mutex);
    m_groups = std::move(groups);
}

QVariant Config::value(const QString &key, const QVariant &defaultValue) const
{
    const auto [group, name] = splitKey(key);
    const std::shared_lock guard(m_mutex);
    const auto found = m_groups.constFind(group);
    return found == m_groups.cend() ? defaultValue : found->value(name, defaultValue);
}

QString Config::stringValue(const QString &key, const QString &defaultValue) const
{
    return value(key, defaultValue).toString();
}

int Config::intValue(const QString &key, int defaultValue) const
{
    using Int = std::numeric_limits<int>;
    const QVariant stored = value(key, defaultValue);
    if (stored.typeId() == QMetaType::Double) { // may be no number, or beyond the widest integer
        const double number = stored.toDouble();
        return std::isnan(number) ? 0 : qRound(std::clamp<double>(number, Int::min(), Int::max()));
    }
    return static_cast<int>(std::clamp<qlonglong>(stored.toLongLong(), Int::min(), Int::max()));
}

bool Config::boolValue(const QString &key, bool defaultValue) const
{
    return value(key, defaultValue).toBool();
}

QStringList Config::groupKeys(const QString &group, bool ownOnly) const
{
    const std::shared_lock guard(m_mutex);
    QStringList names = m_groups.value(group).keys();
    if (ownOnly)
        return names;

    const QString prefix = group + u'.';
    for (auto child = m_groups.cbegin(); child != m_groups.cend(); ++child) {
        if (!child.key().startsWith(prefix))
            continue;
        for (const auto &name : child->keys())
            names.append(child.key().mid(prefix.size()) + u':' + name);
    }
    return names;
}

QStringList Config::childGroups(const QString &pattern, bool withKeysOnly) const
{
    const std::shared_lock guard(m_mutex);
    QStringList names;
    for (auto group = m_groups.cbegin(); group != m_groups.cend(); ++group) {
        if (withKeysOnly && group->isEmpty())
            continue;
        if (matches(group.key(), pattern))
            names.append(group.key());
    }
    return names;
}

bool Config::isTouchInterface() const
{
    return boolValue(QStringLiteral("View.Interface:touchng"), false);
}

void Config::setValue(const QString &key, const QVariant &value)
{
    const auto [group, name] = splitKey(key);
    const std::unique_lock guard(m_mutex);
    if (value.isValid())
        m_groups[group].insert(name, value);
    else if (const auto found = m_groups.find(group); found != m_groups.end())
        found->remove(name);
}
